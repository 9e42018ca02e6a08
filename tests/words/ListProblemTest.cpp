#include "words/ListProblem.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tallyvox;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(tallyvox::IndexerEnding)
Q_DECLARE_METATYPE(tallyvox::ListProblem::Kind)

namespace {

QByteArray compoundFileWith(const QByteArray& streamName)
{
    QByteArray bytes("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
    bytes += QByteArray(504, '\0');
    for (const char c : streamName) {
        bytes += c;
        bytes += '\0';
    }
    return bytes + QByteArray(512, '\0');
}

} // namespace

class ListProblemTest : public QObject {
    Q_OBJECT

private slots:
    // What the user is told of a file's list, from how its indexing ended, whether it gave
    // words, and the file itself.
    void problems_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<IndexerEnding>("ending");
        QTest::addColumn<bool>("gaveWords");
        QTest::addColumn<ListProblem::Kind>("kind");
        QTest::addColumn<bool>("lostWords");
        using K = ListProblem::Kind;
        const QByteArray pdf = "%PDF-1.4\n1 0 obj << /Type /Catalog >> endobj\n"_ba;
        const QByteArray encryptedPdf = pdf + "trailer << /Root 1 0 R /Encrypt 5 0 R >>\n%%EOF\n";
        const QByteArray farTrailer =
            pdf + QByteArray(qsizetype{300} * 1024, ' ') + "trailer << /Encrypt 5 0 R >>\n%%EOF\n";
        const QByteArray middleOnly = pdf + QByteArray(qsizetype{100} * 1024, ' ') + "/Encrypt" +
                                      QByteArray(qsizetype{100} * 1024, ' ') + "%%EOF\n";
        const auto add = [](const char* row, const QString& name, const QByteArray& content,
                            IndexerEnding ending, bool words, K kind) {
            const bool lost = kind == K::NoPermission || kind == K::PasswordProtected ||
                              kind == K::NotADocument || kind == K::PathTooLong ||
                              kind == K::NotRead;
            QTest::newRow(row) << name << content << ending << words << kind << lost;
        };
        add("words", u"a.txt"_s, "a b", IndexerEnding::Complete, true, K::None);
        add("stopped", u"a.txt"_s, "a b", IndexerEnding::Stopped, false, K::None);
        add("empty file", u"e.txt"_s, "", IndexerEnding::Complete, false, K::Empty);
        add("empty file, indexers failed", u"e.txt"_s, "", IndexerEnding::Failed, false, K::Empty);
        add("punctuation only", u"p.txt"_s, "!!! ... ???\n", IndexerEnding::Complete, false,
            K::NoWords);
        add("a PDF of pictures", u"scan.pdf"_s, pdf + "trailer << /Root 1 0 R >>\n%%EOF\n",
            IndexerEnding::Complete, false, K::NoWords);
        add("password-protected PDF", u"locked.pdf"_s, encryptedPdf, IndexerEnding::Complete, false,
            K::PasswordProtected);
        add("password-protected PDF, trailer far from the start", u"locked.pdf"_s, farTrailer,
            IndexerEnding::Complete, false, K::PasswordProtected);
        add("the word Encrypt in the middle of a PDF only", u"odd.pdf"_s, middleOnly,
            IndexerEnding::Complete, false, K::NoWords);
        add("password-protected Word document", u"locked.docx"_s,
            compoundFileWith("EncryptedPackage"), IndexerEnding::Complete, false,
            K::PasswordProtected);
        add("Word 97 document without words", u"blank.doc"_s, compoundFileWith("WordDocument"),
            IndexerEnding::Complete, false, K::NoWords);
        add("an image", u"photo.png"_s, "\x89PNG\r\n\x1a\n\0\0\0\rIHDR"_ba + QByteArray(64, '\0'),
            IndexerEnding::Complete, false, K::NotADocument);
        add("bytes of no kind", u"blob"_s, QByteArray("\x01\x02\x03\xff\xfe", 5).repeated(40),
            IndexerEnding::Complete, false, K::NotADocument);
        add("a package, a folder no indexer reads", u"Notes.rtfd/"_s, {}, IndexerEnding::Complete,
            false, K::NotADocument);
        add("text the indexers failed on", u"t.txt"_s, "some words\n", IndexerEnding::Failed, false,
            K::NotRead);
        add("cut with words", u"big.pdf"_s, pdf, IndexerEnding::Partial, true, K::Cut);
        add("cut before any word", u"big.txt"_s, "words\n", IndexerEnding::Partial, false, K::Cut);
        add("password-protected and cut", u"locked.pdf"_s, encryptedPdf, IndexerEnding::Partial,
            false, K::PasswordProtected);
    }
    void problems()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QFETCH(IndexerEnding, ending);
        QFETCH(bool, gaveWords);
        QFETCH(ListProblem::Kind, kind);
        QFETCH(bool, lostWords);
        testing::TestEnvironment env;
        const QString path = name.endsWith(u'/') ? env.root() + u'/' + name.chopped(1)
                                                 : env.writeFile(name, content);
        if (name.endsWith(u'/')) {
            QVERIFY(QDir().mkpath(path));
        }
        const ListProblem problem = listProblemOf(path, ending, gaveWords, u"zip: too deep"_s);
        QCOMPARE(problem.kind, kind);
        QCOMPARE(problem.isProblem(), kind != ListProblem::Kind::None);
        QCOMPARE(problem.lostWords(), lostWords);
        QCOMPARE(problem.cutReasons,
                 kind == ListProblem::Kind::Cut ? u"zip: too deep"_s : QString());
    }

    void aPathLongerThanTheIndexersTake()
    {
        testing::TestEnvironment env;
        const QString path = env.writeFile(u"d/"_s.repeated(130) + u"deep.txt"_s, "words\n");
        QCOMPARE(listProblemOf(path, IndexerEnding::Failed, false, {}).kind,
                 ListProblem::Kind::PathTooLong);
        QCOMPARE(listProblemOf(path, IndexerEnding::Complete, true, {}).kind,
                 ListProblem::Kind::None);
    }

    // Root reads anything: the look at the file is made by a child that has become nobody.
    void aFileTheUserMayNotRead()
    {
        testing::TestEnvironment env;
        const QString path = env.writeFile(u"secret.txt"_s, "words\n");
        for (QString dir = QFileInfo(path).path(); dir.size() >= env.root().size();
             dir = QFileInfo(dir).path()) {
            QCOMPARE(::chmod(QFile::encodeName(dir).constData(), 0755), 0);
        }
        QCOMPARE(::chmod(QFile::encodeName(path).constData(), 0), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) {
                ::_exit(98);
            }
            const ListProblem problem = listProblemOf(path, IndexerEnding::Complete, false, {});
            ::_exit(problem.kind == ListProblem::Kind::NoPermission && problem.lostWords() ? 0 : 1);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 0);
    }
};

QTEST_GUILESS_MAIN(ListProblemTest)
#include "ListProblemTest.moc"
