#include "services/naming/NameFileByContentType.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

QByteArray content(const QString& kind)
{
    if (kind == "svg"_L1) {
        return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"4\" height=\"4\"/>\n";
    }
    if (kind == "text"_L1) {
        return "Hello, not a picture.\n";
    }
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, kind.toLatin1().constData());
    return bytes;
}

} // namespace

class NameFileByContentTypeTest : public QObject {
    Q_OBJECT

private slots:
    void rename_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("finalName"); // empty: no rename

        const QString n125(125, u'n'), n200(200, u'n'), wide(84, QChar(0x65e5));
        QTest::newRow("png") << u"x"_s << u"png"_s << u"x.png"_s;
        QTest::newRow("old extension kept") << u"a.dat"_s << u"png"_s << u"a.dat.png"_s;
        QTest::newRow("already .PNG") << u"x.PNG"_s << u"png"_s << u"x.PNG"_s;
        QTest::newRow("jpeg by the user's map") << u"x"_s << u"jpeg"_s << u"x.jpg"_s;
        QTest::newRow("already .JPG") << u"x.JPG"_s << u"jpeg"_s << u"x.JPG"_s;
        QTest::newRow("already another of the type's") << u"x.Jpeg"_s << u"jpeg"_s << u"x.Jpeg"_s;
        QTest::newRow("svg through Qt SVG") << u"d"_s << u"svg"_s << u"d.svg"_s;
        QTest::newRow("content, not the name") << u"fake.png"_s << u"text"_s << QString();
        QTest::newRow("type in no map") << u"icon"_s << u"icns"_s << QString();
        QTest::newRow("cut at 127 units") << n125 << u"png"_s << n125 + u".p"_s;
        QTest::newRow("extension cut away") << n200 << u"png"_s << n200.left(127);
        QTest::newRow("name the file system refuses") << wide << u"png"_s << QString();
    }
    void rename()
    {
        QFETCH(QString, name);
        QFETCH(QString, kind);
        QFETCH(QString, finalName);
        testing::TestEnvironment env;
        env.writeFile(u"home/.mime.types"_s,
                      "image/png png\nimage/jpeg jfif jpeg\nimage/svg+xml svg\n");
        const QByteArray bytes = content(kind);
        const auto file = FileRef::fromPath(env.writeFile(u"out/"_s + name, bytes));
        testing::RecordingDesktop desktop;
        std::optional<FileRef> renamed;

        QCOMPARE(NameFileByContentType(desktop, *file, renamed), !finalName.isEmpty());
        const QString expected = finalName.isEmpty() ? name : finalName;
        QCOMPARE(QDir(env.root() + u"/out"_s).entryList(QDir::Files), QStringList{expected});
        if (renamed) {
            QCOMPARE(renamed->name(), expected);
            QCOMPARE(desktop.texts(u"filesChanged"_s), QStringList{renamed->path()});
        }
        QVERIFY(renamed || desktop.events().isEmpty());
    }

    void neverReplacesAnotherFile()
    {
        testing::TestEnvironment env;
        const auto file = FileRef::fromPath(env.writeFile(u"out/x"_s, content(u"png"_s)));
        const QString other = env.writeFile(u"out/x.png"_s, "older");
        testing::RecordingDesktop desktop;
        std::optional<FileRef> renamed;
        QVERIFY(!NameFileByContentType(desktop, *file, renamed));
        QCOMPARE(QFileInfo(other).size(), 5);
        QVERIFY(QFileInfo::exists(file->path()));
    }

    void lastMatchingTypeWins_data()
    {
        QTest::addColumn<QByteArrayList>("types");
        QTest::addColumn<QString>("expected");
        QTest::newRow("last of two") << QByteArrayList{"x/a", "x/none", "x/b"} << u".bbb"_s;
        QTest::newRow("other order") << QByteArrayList{"x/b", "x/a"} << u".aaa"_s;
        QTest::newRow("jfif, then a miss") << QByteArrayList{"x/j", "x/none"} << u".jpg"_s;
        QTest::newRow("case matters") << QByteArrayList{"X/A"} << QString();
        // The line's order is not the map's: the type's usual extension comes first.
        QTest::newRow("jpeg as .jpg") << QByteArrayList{"image/jpeg"} << u".jpg"_s;
    }
    void lastMatchingTypeWins()
    {
        QFETCH(QByteArrayList, types);
        QFETCH(QString, expected);
        testing::TestEnvironment env;
        env.writeFile(u"home/.mime.types"_s,
                      "x/a aaa\nx/b bbb\nx/j jfif\nimage/jpeg jpeg jpg jpe\n");
        const std::optional<FixedString> ext = ExtensionForMimeTypes(types);
        QCOMPARE(ext ? QString::fromLatin1(ext->c_str()) : QString(), expected);
        QVERIFY(MimeExtensionCache().count() == 0); // map results are not cached
    }

    // Last: once loaded, the exporter table stays for the rest of the process.
    void exportersComeFirstAndAreCached()
    {
        testing::TestEnvironment env;
        testing::RecordingDesktop loader;
        const qint16 count = LoadGraphicExporters(loader);
        QVERIFY(count > 0);
        QCOMPARE(qsizetype(count), ExporterTable().size());
        QCOMPARE(loader.texts(u"log"_s),
                 QStringList({u"Vantrel: Loading %1 Quicktime exporters"_s.arg(count) +
                                  QString(count, u'.'),
                              u"Vantrel: Quicktime exporters successfully loaded."_s}));
        const auto png =
            std::find_if(ExporterTable().begin(), ExporterTable().end(),
                         [](const auto& r) { return r.mimeTypeString == "image/png"_L1; });
        QVERIFY(png != ExporterTable().end());
        QCOMPARE(png->fileType, quint32(0x504e4720));

        env.writeFile(u"home/.mime.types"_s, "image/png frommap\n");
        const auto file = FileRef::fromPath(env.writeFile(u"out/x"_s, content(u"png"_s)));
        testing::RecordingDesktop desktop;
        std::optional<FileRef> renamed;
        QVERIFY(NameFileByContentType(desktop, *file, renamed));
        QCOMPARE(renamed->name(), u"x.png"_s);
        QCOMPARE(QByteArray(MimeExtensionCache().find("image/png")->value.c_str()), ".png");
    }
};

QTEST_GUILESS_MAIN(NameFileByContentTypeTest)
#include "NameFileByContentTypeTest.moc"
