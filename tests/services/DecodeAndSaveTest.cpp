#include "services/DecodeAndSave.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>

using namespace tallyvox;

namespace {

QByteArray imageBytes(const char* format)
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

const QByteArray svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"2\" height=\"2\">"
                       "<rect width=\"2\" height=\"2\"/></svg>\n";

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

QStringList namesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
}

// A world with its own extension map and a folder for saved files.
struct World {
    World()
    {
        env.writeFile(QStringLiteral("home/.mime.types"),
                      "image/png png\nimage/jpeg jpg jpeg\nimage/svg+xml svg\n");
        QDir().mkpath(folder());
    }
    QString folder() const { return env.root() + QStringLiteral("/saved"); }
    QString path(const QString& name) const { return folder() + QLatin1Char('/') + name; }

    testing::TestEnvironment env;
    testing::RecordingDesktop desktop;
};

} // namespace

class DecodeAndSaveTest : public QObject {
    Q_OBJECT

private slots:
    void decodeAndSave_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("chosenName");
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<QString>("finalName");

        QTest::newRow("bytes of no known type keep the chosen name")
            << QStringLiteral("SGVsbG8=") << QStringLiteral("x") << QByteArray("Hello")
            << QStringLiteral("x");
        const QByteArray png = imageBytes("PNG");
        QTest::newRow("PNG gets its extension")
            << QString::fromLatin1(png.toBase64()) << QStringLiteral("DecodedBase64") << png
            << QStringLiteral("DecodedBase64.png");
        QTest::newRow("PNG named .PNG keeps its name")
            << QString::fromLatin1(png.toBase64()) << QStringLiteral("shot.PNG") << png
            << QStringLiteral("shot.PNG");
        const QByteArray jpeg = imageBytes("JPEG");
        // Base64 as mail carries it: in lines, the last one ending in a line break
        // after a complete group, which loses the final byte of the JPEG.
        QString mailed;
        const QByteArray base64 = jpeg.left(jpeg.size() - jpeg.size() % 3).toBase64();
        for (qsizetype i = 0; i < base64.size(); i += 76)
            mailed += QString::fromLatin1(base64.mid(i, 76)) + QStringLiteral("\r\n");
        QTest::newRow("JPEG in mail lines")
            << mailed << QStringLiteral("photo") << jpeg.left(jpeg.size() - jpeg.size() % 3 - 1)
            << QStringLiteral("photo.jpg");
        QTest::newRow("outside ASCII saves an empty file")
            << QStringLiteral("SGVsbG8=\u00e9") << QStringLiteral("empty") << QByteArray()
            << QStringLiteral("empty");
    }
    void decodeAndSave()
    {
        QFETCH(QString, text);
        QFETCH(QString, chosenName);
        QFETCH(QByteArray, written);
        QFETCH(QString, finalName);
        World world;
        world.desktop.answerSavePanel(world.path(chosenName));

        DecodeAndSaveBase64(world.desktop, text);

        QCOMPARE(world.desktop.texts(QStringLiteral("savePanel")),
                 QStringList{QStringLiteral("DecodedBase64")});
        QCOMPARE(namesIn(world.folder()), QStringList{finalName});
        QCOMPARE(readAll(world.path(finalName)), written);
        // Opened under the name it ended up with.
        QCOMPARE(world.desktop.texts(QStringLiteral("openFile")),
                 QStringList{world.path(finalName)});
        QVERIFY(world.desktop.alerts().isEmpty());
    }

    void undecodableTextAlerts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("a blank") << QStringLiteral(" ");
        QTest::newRow("punctuation and line breaks") << QStringLiteral("-- !?\n\n");
    }
    void undecodableTextAlerts()
    {
        QFETCH(QString, text);
        World world;
        world.desktop.answerSavePanel(world.path(QStringLiteral("never")));
        DecodeAndSaveBase64(world.desktop, text);
        QCOMPARE(world.desktop.alerts(),
                 QStringList{QStringLiteral("The text could not be base64 decoded")});
        QCOMPARE(world.desktop.events().size(), 1);
        QVERIFY(namesIn(world.folder()).isEmpty());
    }

    void cancelledPanelsDoNothing_data()
    {
        QTest::addColumn<bool>("graphic");
        QTest::newRow("decode") << false;
        QTest::newRow("graphic") << true;
    }
    void cancelledPanelsDoNothing()
    {
        QFETCH(bool, graphic);
        World world;
        if (graphic)
            SaveGraphicData(world.desktop, QString::fromLatin1(svg));
        else
            DecodeAndSaveBase64(world.desktop, QStringLiteral("SGVsbG8="));
        QCOMPARE(
            world.desktop.texts(QStringLiteral("savePanel")),
            QStringList{graphic ? QStringLiteral("Graphic") : QStringLiteral("DecodedBase64")});
        QCOMPARE(world.desktop.events().size(), 1);
        QVERIFY(namesIn(world.folder()).isEmpty());
    }

    // A folder where the file should go: the write fails for root too.
    void failedWrites_data()
    {
        QTest::addColumn<bool>("graphic");
        QTest::newRow("decode opens nothing") << false;
        QTest::newRow("graphic still opens the chosen path") << true;
    }
    void failedWrites()
    {
        QFETCH(bool, graphic);
        World world;
        const QString chosen = world.path(QStringLiteral("taken"));
        QVERIFY(QDir().mkpath(chosen));
        world.desktop.answerSavePanel(chosen);
        if (graphic)
            SaveGraphicData(world.desktop, QString::fromLatin1(svg));
        else
            DecodeAndSaveBase64(world.desktop, QStringLiteral("SGVsbG8="));
        QCOMPARE(world.desktop.texts(QStringLiteral("openFile")),
                 graphic ? QStringList{chosen} : QStringList{});
        QVERIFY(world.desktop.alerts().isEmpty());
        QCOMPARE(namesIn(world.folder()), QStringList{QStringLiteral("taken")});
    }

    void graphicOpensTheChosenPathAfterARename()
    {
        World world;
        const QString chosen = world.path(QStringLiteral("Graphic"));
        world.desktop.answerSavePanel(chosen);
        SaveGraphicData(world.desktop, QString::fromLatin1(svg));
        QCOMPARE(namesIn(world.folder()), QStringList{QStringLiteral("Graphic.svg")});
        QCOMPARE(readAll(world.path(QStringLiteral("Graphic.svg"))), svg);
        QCOMPARE(world.desktop.texts(QStringLiteral("filesChanged")),
                 QStringList{world.path(QStringLiteral("Graphic.svg"))});
        // Deliberately the old path, which no longer exists.
        QCOMPARE(world.desktop.texts(QStringLiteral("openFile")), QStringList{chosen});
    }

    void graphicTextIsSavedAsUtf8()
    {
        World world;
        world.desktop.answerSavePanel(world.path(QStringLiteral("note")));
        SaveGraphicData(world.desktop, QStringLiteral("caf\u00e9 \U0001F600"));
        QCOMPARE(readAll(world.path(QStringLiteral("note"))),
                 QByteArray("caf\xc3\xa9 \xf0\x9f\x98\x80"));
        QCOMPARE(world.desktop.texts(QStringLiteral("openFile")),
                 QStringList{world.path(QStringLiteral("note"))});
    }

    void graphicTextWithoutUtf8FormAlerts()
    {
        World world;
        world.desktop.answerSavePanel(world.path(QStringLiteral("never")));
        SaveGraphicData(world.desktop, QStringLiteral("lone ") + QChar(0xd800));
        QCOMPARE(world.desktop.alerts(),
                 QStringList{QStringLiteral("The text could not be decoded as UTF8")});
        QCOMPARE(world.desktop.events().size(), 1);
    }
};

QTEST_GUILESS_MAIN(DecodeAndSaveTest)
#include "DecodeAndSaveTest.moc"
