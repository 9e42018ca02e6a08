#include "support/NameFileByContentType.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QTemporaryFile>
#include <QTest>

#include <cstdio>
#include <unistd.h>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

QByteArray imageBytes(const char* format)
{
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

QByteArray content(const QString& kind)
{
    if (kind == QLatin1String("svg"))
        return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"4\" height=\"4\">"
               "<rect width=\"4\" height=\"4\"/></svg>\n";
    if (kind == QLatin1String("text"))
        return "Hello, this is not a picture.\n";
    return imageBytes(kind.toLatin1().constData());
}

QStringList namesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

class NameFileByContentTypeTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The rows below need these readers; without them the test says nothing.
        const QList<QByteArray> formats = QImageWriter::supportedImageFormats();
        QVERIFY(formats.contains("png") && formats.contains("jpeg") && formats.contains("icns"));
    }

    void rename_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QByteArray>("userMap");
        QTest::addColumn<bool>("result");
        QTest::addColumn<QString>("expectedName");

        const QByteArray png = "image/png png\n";
        QTest::newRow("png gets its extension") << u"x"_s << u"png"_s << png << true << u"x.png"_s;
        QTest::newRow("another extension is kept")
            << u"photo.dat"_s << u"png"_s << png << true << u"photo.dat.png"_s;
        QTest::newRow("PNG already ends in .PNG")
            << u"x.PNG"_s << u"png"_s << png << true << u"x.PNG"_s;
        QTest::newRow("jpeg by the user's map")
            << u"x"_s << u"jpeg"_s << QByteArray("image/jpeg jpg jpeg\n") << true << u"x.jpg"_s;
        QTest::newRow("jfif becomes jpg")
            << u"x"_s << u"jpeg"_s << QByteArray("image/jpeg jfif\n") << true << u"x.jpg"_s;
        QTest::newRow("JPEG already ends in .JPG")
            << u"x.JPG"_s << u"jpeg"_s << QByteArray("image/jpeg jpg\n") << true << u"x.JPG"_s;
        QTest::newRow("svg through Qt SVG")
            << u"drawing"_s << u"svg"_s << QByteArray("image/svg+xml svg\n") << true
            << u"drawing.svg"_s;
        QTest::newRow("name is not looked at, only content")
            << u"fake.png"_s << u"text"_s << png << false << u"fake.png"_s;
        QTest::newRow("type in no map") << u"icon"_s << u"icns"_s << png << false << u"icon"_s;
        QTest::newRow("name grows past 127 units and is cut")
            << QString(125, QLatin1Char('n')) << u"png"_s << png << true
            << QString(125, QLatin1Char('n')) + QStringLiteral(".p");
        QTest::newRow("long name loses the extension whole")
            << QString(200, QLatin1Char('n')) << u"png"_s << png << true
            << QString(127, QLatin1Char('n'));
        QTest::newRow("name the file system refuses")
            << QString(84, QChar(0x65e5)) << u"png"_s << png << false << QString(84, QChar(0x65e5));
    }
    void rename()
    {
        QFETCH(QString, name);
        QFETCH(QString, kind);
        QFETCH(QByteArray, userMap);
        QFETCH(bool, result);
        QFETCH(QString, expectedName);
        testing::TestEnvironment env;
        env.writeFile(QStringLiteral("home/.mime.types"), userMap);
        const QString folder = env.root() + QStringLiteral("/out");
        const QByteArray bytes = content(kind);
        const auto file = FileRef::fromPath(env.writeFile(QStringLiteral("out/") + name, bytes));
        QVERIFY(file);

        testing::RecordingDesktop desktop;
        std::optional<FileRef> renamed;
        QCOMPARE(NameFileByContentType(desktop, *file, renamed), result);
        QCOMPARE(namesIn(folder), QStringList{expectedName});
        const QString finalPath = folder + QLatin1Char('/') + expectedName;
        QFile written(finalPath);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QCOMPARE(written.readAll(), bytes);
        if (result) {
            QVERIFY(renamed);
            QCOMPARE(renamed->path(), finalPath);
            QCOMPARE(desktop.texts(QStringLiteral("filesChanged")), QStringList{finalPath});
        } else {
            QVERIFY(desktop.events().isEmpty());
        }
    }

    void neverReplacesAnotherFile()
    {
        testing::TestEnvironment env;
        env.writeFile(QStringLiteral("home/.mime.types"), "image/png png\n");
        const auto file =
            FileRef::fromPath(env.writeFile(QStringLiteral("out/x"), content(u"png"_s)));
        env.writeFile(QStringLiteral("out/x.png"), "older file");
        testing::RecordingDesktop desktop;
        std::optional<FileRef> renamed;
        QVERIFY(!NameFileByContentType(desktop, *file, renamed));
        QVERIFY(!renamed);
        QFile older(env.root() + QStringLiteral("/out/x.png"));
        QVERIFY(older.open(QIODevice::ReadOnly));
        QCOMPARE(older.readAll(), QByteArray("older file"));
        QVERIFY(QFile::exists(file->path()));
    }

    void lastMatchingTypeWins_data()
    {
        QTest::addColumn<QStringList>("types");
        QTest::addColumn<QString>("expected");

        QTest::newRow("last of two")
            << QStringList{u"image/x-a"_s, u"image/x-none"_s, u"image/x-b"_s} << u".bbb"_s;
        QTest::newRow("other order") << QStringList{u"image/x-b"_s, u"image/x-a"_s} << u".aaa"_s;
        QTest::newRow("earlier match survives a later miss")
            << QStringList{u"image/x-a"_s, u"image/x-none"_s} << u".aaa"_s;
        QTest::newRow("jfif of an earlier match")
            << QStringList{u"image/x-j"_s, u"image/x-none"_s} << u".jpg"_s;
        QTest::newRow("first map entry of a type") << QStringList{u"image/x-twice"_s} << u".one"_s;
        QTest::newRow("case matters") << QStringList{u"IMAGE/X-A"_s} << QString();
        QTest::newRow("nothing maps") << QStringList{u"image/x-none"_s} << QString();
        QTest::newRow("empty list") << QStringList{} << QString();
    }
    void lastMatchingTypeWins()
    {
        QFETCH(QStringList, types);
        QFETCH(QString, expected);
        testing::TestEnvironment env;
        env.writeFile(QStringLiteral("home/.mime.types"),
                      "image/x-a aaa\nimage/x-b bbb\nimage/x-j jfif\nimage/x-twice one two\n");
        QList<QByteArray> list;
        for (const QString& type : types)
            list.append(type.toLatin1());
        const std::optional<FixedString> ext = ExtensionForMimeTypes(list);
        QCOMPARE(ext ? QString::fromLatin1(ext->c_str()) : QString(), expected);
    }

    void mapResultsAreNotCached()
    {
        testing::TestEnvironment env;
        env.writeFile(QStringLiteral("home/.mime.types"), "image/x-a first\n");
        QCOMPARE(QByteArray(ExtensionForMimeTypes({"image/x-a"})->c_str()), QByteArray(".first"));
        env.writeFile(QStringLiteral("home/.mime.types"), "image/x-a second\n");
        QCOMPARE(QByteArray(ExtensionForMimeTypes({"image/x-a"})->c_str()), QByteArray(".second"));
        QVERIFY(MimeExtensionCache().find("image/x-a") == nullptr);
    }

    void mimeTypesOfImages_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QByteArrayList>("expected");
        QTest::newRow("png") << u"png"_s << QByteArrayList{"image/png"};
        QTest::newRow("jpeg") << u"jpeg"_s << QByteArrayList{"image/jpeg"};
        QTest::newRow("svg") << u"svg"_s << QByteArrayList{"image/svg+xml"};
        QTest::newRow("text") << u"text"_s << QByteArrayList{};
    }
    void mimeTypesOfImages()
    {
        QFETCH(QString, kind);
        QFETCH(QByteArrayList, expected);
        testing::TestEnvironment env;
        QCOMPARE(ImageMimeTypesOfFile(env.writeFile(QStringLiteral("f.gif"), content(kind))),
                 expected);
    }

    // Last: once loaded, the exporter table stays for the rest of the process.
    void exportersComeBeforeTheMapAndAreCached()
    {
        testing::TestEnvironment env;
        QVERIFY(ExporterTable().empty());

        // The loading lines go to standard output; catch them there.
        QTemporaryFile captured;
        QVERIFY(captured.open());
        std::fflush(stdout);
        const int savedStdout = ::dup(STDOUT_FILENO);
        ::dup2(captured.handle(), STDOUT_FILENO);
        const qint16 count = LoadGraphicExporters();
        std::fflush(stdout);
        ::dup2(savedStdout, STDOUT_FILENO);
        ::close(savedStdout);

        QCOMPARE(int(count), int(QImageWriter::supportedMimeTypes().size()));
        QCOMPARE(int(ExporterTable().size()), int(count));
        captured.seek(0);
        QCOMPARE(captured.readAll(), "Vantrel: Loading " + QByteArray::number(count) +
                                         " Quicktime exporters" + QByteArray(count, '.') +
                                         "\nVantrel: Quicktime exporters successfully loaded.\n");

        const auto png = std::find_if(ExporterTable().begin(), ExporterTable().end(),
                                      [](const ExporterRecord& record) {
                                          return QByteArray(record.mimeType) == "image/png";
                                      });
        QVERIFY(png != ExporterTable().end());
        QCOMPARE(QByteArray(png->extension), QByteArray("png"));
        QCOMPARE(QByteArray(png->fileTypeText), QByteArray("PNG "));
        QCOMPARE(png->fileType, quint32(0x504e4720));

        // The user's map says otherwise, but the exporter is asked first.
        env.writeFile(QStringLiteral("home/.mime.types"), "image/png fromthemap\n");
        const auto file =
            FileRef::fromPath(env.writeFile(QStringLiteral("out/x"), content(u"png"_s)));
        testing::RecordingDesktop desktop;
        std::optional<FileRef> renamed;
        QVERIFY(NameFileByContentType(desktop, *file, renamed));
        QCOMPARE(renamed->name(), QStringLiteral("x.png"));
        const StringMap::Node* cached = MimeExtensionCache().find("image/png");
        QVERIFY(cached != nullptr);
        QCOMPARE(QByteArray(cached->value.c_str()), QByteArray(".png"));
    }
};

QTEST_GUILESS_MAIN(NameFileByContentTypeTest)
#include "NameFileByContentTypeTest.moc"
