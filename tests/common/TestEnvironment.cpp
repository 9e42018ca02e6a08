#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace tallyvox::testing {

namespace {
const char* const variables[4] = {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "TMPDIR", "HOME"};
}

TestEnvironment::TestEnvironment()
{
    const QString folders[4] = {configHome(), dataHome(), tempFolder(), home()};
    for (int i = 0; i < 4; ++i) {
        m_had[i] = qEnvironmentVariableIsSet(variables[i]);
        m_saved[i] = qgetenv(variables[i]);
        QDir().mkpath(folders[i]);
        // Private, as the application wants its temporary folder; a shared one is tested apart.
        if (i == 2) {
            QFile::setPermissions(folders[i],
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        qputenv(variables[i], QFile::encodeName(folders[i]));
    }
}

TestEnvironment::~TestEnvironment()
{
    for (int i = 0; i < 4; ++i) {
        if (m_had[i]) {
            qputenv(variables[i], m_saved[i]);
        } else {
            qunsetenv(variables[i]);
        }
    }
}

QString TestEnvironment::writeFile(const QString& relativePath, const QByteArray& content) const
{
    QString path = root() + QLatin1Char('/') + relativePath;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        return {};
    }
    return path;
}

} // namespace tallyvox::testing
