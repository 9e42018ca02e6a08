#include "shell/Integration.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

namespace tallyvox {

namespace {

struct FileService {
    const char* name;
    /// The Nautilus script's file name is its menu label.
    const char* nautilusLabel;
    const char* nemoAction;
};

constexpr FileService fileServices[] = {
    {"tallyvox", "Tallyvox Word List", "tallyvox-wordlist.nemo_action"},
    {"wordCount", "Tallyvox Word Count", "tallyvox-wordcount.nemo_action"},
    {"charCount", "Tallyvox Character Count", "tallyvox-charcount.nemo_action"},
    {"decodeBase64", "Tallyvox Decode Base64", "tallyvox-decodebase64.nemo_action"},
};

QByteArray resource(const QString& name)
{
    QFile file(QStringLiteral(":/integration/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Executable, because KDE runs no service menu and Nautilus no script that is not.
bool writeExecutable(const QString& path, const QByteArray& content)
{
    if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(content) != content.size()) {
        return false;
    }
    return file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                               QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther |
                               QFile::ExeOther);
}

} // namespace

bool installIntegration(const QString& dataHome, QTextStream& out, QTextStream& err)
{
    QList<std::pair<QString, QByteArray>> files{
        {QStringLiteral("kio/servicemenus/tallyvox-servicemenu.desktop"),
         resource(QStringLiteral("dolphin/tallyvox-servicemenu.desktop"))}};
    const QByteArray script = resource(QStringLiteral("nautilus/script.in"));
    for (const FileService& service : fileServices) {
        files.append(
            {QStringLiteral("nautilus/scripts/") + QString::fromUtf8(service.nautilusLabel),
             QByteArray(script).replace("@SERVICE@", service.name)});
        const QString nemo = QString::fromLatin1(service.nemoAction);
        files.append(
            {QStringLiteral("nemo/actions/") + nemo, resource(QStringLiteral("nemo/") + nemo)});
    }
    bool allWritten = true;
    for (const auto& [relativePath, content] : files) {
        const QString path = dataHome + QLatin1Char('/') + relativePath;
        if (!content.isEmpty() && writeExecutable(path, content)) {
            out << path << '\n';
        } else {
            err << QCoreApplication::translate("tallyvox::Integration",
                                               "tallyvox: could not write %1\n")
                       .arg(path);
            allWritten = false;
        }
    }
    out.flush();
    err.flush();
    return allWritten;
}

} // namespace tallyvox
