#pragma once

#include <QString>
#include <QTemporaryDir>

namespace tallyvox::testing {

/// A private world for one test: XDG_CONFIG_HOME, XDG_DATA_HOME, TMPDIR and HOME
/// point into a fresh temporary directory for as long as the object lives.
class TestEnvironment {
public:
    TestEnvironment();
    ~TestEnvironment();
    TestEnvironment(const TestEnvironment&) = delete;
    TestEnvironment& operator=(const TestEnvironment&) = delete;

    QString root() const { return m_dir.path(); }
    QString configHome() const { return root() + QStringLiteral("/config"); }
    QString dataHome() const { return root() + QStringLiteral("/data"); }
    QString tempFolder() const { return root() + QStringLiteral("/tmp"); }
    QString home() const { return root() + QStringLiteral("/home"); }

    /// Writes a file below root() (folders made as needed) and returns its path.
    QString writeFile(const QString& relativePath, const QByteArray& content) const;

private:
    QTemporaryDir m_dir;
    QByteArray m_saved[4];
    bool m_had[4] = {};
};

} // namespace tallyvox::testing
