#include "services/StringExtensions.h"

#include <QTest>

#include <stdexcept>

using namespace tallyvox;

namespace {
const QString none = QStringLiteral("<none>");

QString shown(const std::optional<QString>& text)
{
    return text ? *text : none;
}
} // namespace

class StringExtensionsTest : public QObject {
    Q_OBJECT

private slots:
    void extract_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("end");
        QTest::addColumn<QString>("forward");
        QTest::addColumn<QString>("reverse");

        auto row = [](const char* name, const char* text, const char* start, const char* end,
                      const QString& forward, const QString& reverse) {
            QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(start)
                                << QString::fromUtf8(end) << forward << reverse;
        };
        row("brackets", "a[b]c", "[", "]", QStringLiteral("b"), QStringLiteral("b"));
        row("missing start", "a[b]c", "X", "]", none, none);
        row("missing end", "a[b", "[", "]", none, none);
        row("two pairs", "[a][b]", "[", "]", QStringLiteral("a"), QStringLiteral("a"));
        row("start nearest the end marker", "[a[b]", "[", "]", QStringLiteral("a[b"),
            QStringLiteral("b"));
        row("end only before start", "]x[", "[", "]", none, none);
        row("adjacent markers", "<b></b>", "<b>", "</b>", QString(), QString());
        row("longer markers", "<title>Hi</TITLE>", "<TITLE>", "</title>", QStringLiteral("Hi"),
            QStringLiteral("Hi"));
        row("empty start marker", "abc", "", "c", none, none);
        row("empty end marker", "abc", "a", "", none, none);
    }
    void extract()
    {
        QFETCH(QString, text);
        QFETCH(QString, start);
        QFETCH(QString, end);
        QFETCH(QString, forward);
        QFETCH(QString, reverse);
        QCOMPARE(shown(extractBetweenPattern(text, start, end)), forward);
        QCOMPARE(shown(reverseExtractBetweenPattern(text, start, end)), reverse);
    }

    // The end marker is searched from the start marker's own position, so one found
    // inside it makes a negative range.
    void endMarkerInsideStartMarkerThrows_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("end");
        QTest::newRow("equal markers")
            << QStringLiteral("a|b|c") << QStringLiteral("|") << QStringLiteral("|");
        QTest::newRow("end is the start's tail")
            << QStringLiteral("--ab--b") << QStringLiteral("ab") << QStringLiteral("b");
    }
    void endMarkerInsideStartMarkerThrows()
    {
        QFETCH(QString, text);
        QFETCH(QString, start);
        QFETCH(QString, end);
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, extractBetweenPattern(text, start, end));
    }

    void cleanForFilenameReplacesEachSlashAndColon()
    {
        QCOMPARE(cleanForFilename(QStringLiteral("r\u00e9/b::c")), QStringLiteral("r\u00e9-b--c"));
    }

    void runScript_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("expected");
        QTest::newRow("text result") << QStringLiteral("echo x") << QStringLiteral("x");
        QTest::newRow("list result is nothing") << QStringLiteral("printf 'x\\0'") << none;
        QTest::newRow("no output is nothing") << QStringLiteral("true") << none;
        QTest::newRow("lines stay, trailing breaks go")
            << QStringLiteral("printf 'a\\nb\\n\\n'") << QStringLiteral("a\nb");
        QTest::newRow("exit status not looked at")
            << QStringLiteral("echo partial; exit 3") << QStringLiteral("partial");
        QTest::newRow("UTF-8") << QStringLiteral("printf 'caf\\303\\251'")
                               << QStringLiteral("caf\u00e9");
        QTest::newRow("not UTF-8 is nothing") << QStringLiteral("printf 'caf\\351'") << none;
    }
    void runScript()
    {
        QFETCH(QString, script);
        QFETCH(QString, expected);
        QCOMPARE(shown(tallyvox::runScript(script)), expected);
    }
};

QTEST_GUILESS_MAIN(StringExtensionsTest)
#include "StringExtensionsTest.moc"
