#include "words/LemmaList.h"

#include "support/RegularFile.h"
#include "words/StopList.h"
#include "words/WordTableShaping.h"

namespace tallyvox {

namespace {

QString keyOf(QStringView name, bool fold)
{
    return fold ? foldCase(name) : name.toString();
}

} // namespace

std::optional<QString> LemmaList::headwordFor(QStringView key) const
{
    // The whole entry first: a file may list forms of several words ("a lot -> lots").
    if (const auto it = headwordOf.constFind(key.toString()); it != headwordOf.cend()) {
        return *it;
    }
    if (!key.contains(QLatin1Char(' '))) {
        return std::nullopt;
    }
    // An n-gram: each word by its headword, so "went home" and "goes home" are "go home".
    QString result;
    bool changed = false;
    for (const QStringView word : key.split(QLatin1Char(' '))) {
        if (!result.isEmpty()) {
            result += QLatin1Char(' ');
        }
        const auto it = headwordOf.constFind(word.toString());
        if (it == headwordOf.cend()) {
            result += word;
        } else {
            result += *it;
            changed = true;
        }
    }
    return changed ? std::optional<QString>(result) : std::nullopt;
}

LemmaList parseLemmaList(const QByteArray& bytes, bool fold)
{
    QString text = QString::fromUtf8(bytes);
    if (text.startsWith(QChar(0xFEFF))) {
        text.remove(0, 1);
    }
    LemmaList list;
    for (QStringView line : QStringView(text).split(QLatin1Char('\n'))) {
        const qsizetype comment = line.indexOf(QLatin1Char('#'));
        if (comment >= 0) {
            line.truncate(comment);
        }
        const qsizetype arrow = line.indexOf(QLatin1String("->"));
        if (arrow < 0) {
            continue;
        }
        const QString headword = line.left(arrow).trimmed().toString();
        if (headword.isEmpty()) {
            continue;
        }
        // The first headword a form is given keeps it.
        const auto add = [&](QStringView name) {
            const QString key = keyOf(name, fold);
            if (!list.headwordOf.contains(key)) {
                list.headwordOf.insert(key, headword);
            }
        };
        add(headword);
        for (const QStringView form : line.mid(arrow + 2).split(QLatin1Char(','))) {
            if (const QStringView name = form.trimmed(); !name.isEmpty()) {
                add(name);
            }
        }
    }
    return list;
}

std::optional<LemmaList> readLemmaList(const QString& setting, bool fold)
{
    if (setting.isEmpty()) {
        return std::nullopt;
    }
    const std::optional<QByteArray> bytes =
        readRegularFile(stopListFile(setting), largestLemmaList).bytes;
    if (!bytes) {
        return std::nullopt;
    }
    return parseLemmaList(*bytes, fold);
}

QString describeForms(const QList<std::pair<QString, qint64>>& forms)
{
    QString text;
    for (const auto& [form, count] : forms) {
        if (!text.isEmpty()) {
            text += QLatin1String(", ");
        }
        text += form;
        if (count != unreadableCount) {
            text += QLatin1Char(' ') + QString::number(count);
        }
    }
    return text;
}

} // namespace tallyvox
