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

    // answer: the save panel's answer ("" cancels, "folder" is a folder in the way).
    void nothingWritten_data()
    {
        QTest::addColumn<bool>("graphic");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QStringList>("kinds");

        const QString base64 = QStringLiteral("SGVsbG8=");
        const QString svgText = QString::fromLatin1(svg);
        const QStringList panel{QStringLiteral("savePanel")};
        QTest::newRow("not Base64") << false << QStringLiteral(" -!\n") << QStringLiteral("x")
                                    << QStringList{QStringLiteral("alert")};
        QTest::newRow("no UTF-8 form")
            << true << QStringLiteral("a") + QChar(0xd800) << QStringLiteral("x")
            << QStringList{QStringLiteral("alert")};
        QTest::newRow("decode cancelled") << false << base64 << QString() << panel;
        QTest::newRow("graphic cancelled") << true << svgText << QString() << panel;
        QTest::newRow("decode write fails: nothing opened")
            << false << base64 << QStringLiteral("folder") << panel;
        QTest::newRow("graphic write fails: chosen path opened")
            << true << svgText << QStringLiteral("folder")
            << QStringList{QStringLiteral("savePanel"), QStringLiteral("openFile")};
    }
    void nothingWritten()
    {
        QFETCH(bool, graphic);
        QFETCH(QString, text);
        QFETCH(QString, answer);
        QFETCH(QStringList, kinds);
        World world;
        if (answer == QLatin1String("folder"))
            QVERIFY(QDir().mkpath(world.path(answer)));
        if (!answer.isEmpty())
            world.desktop.answerSavePanel(world.path(answer));
        graphic ? SaveGraphicData(world.desktop, text) : DecodeAndSaveBase64(world.desktop, text);

        QStringList seen;
        for (const auto& event : world.desktop.events())
            seen.append(event.kind);
        QCOMPARE(seen, kinds);
        QCOMPARE(world.desktop.texts(QStringLiteral("savePanel")).value(0),
                 kinds.contains(QStringLiteral("savePanel"))
                     ? (graphic ? QStringLiteral("Graphic") : QStringLiteral("DecodedBase64"))
                     : QString());
        const QStringList alert{graphic ? QStringLiteral("The text could not be decoded as UTF8")
                                        : QStringLiteral("The text could not be base64 decoded")};
        QCOMPARE(world.desktop.alerts(),
                 kinds.contains(QStringLiteral("alert")) ? alert : QStringList());
        QCOMPARE(namesIn(world.folder()),
                 answer == QLatin1String("folder") ? QStringList{answer} : QStringList());
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
};

QTEST_GUILESS_MAIN(DecodeAndSaveTest)
#include "DecodeAndSaveTest.moc"
