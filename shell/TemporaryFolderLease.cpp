#include "shell/TemporaryFolderLease.h"

#include "services/TemporaryFile.h"
#include "support/Desktop.h"
#include "support/FilePath.h"

#include <QDir>

namespace tallyvox {

TemporaryFolderLease::TemporaryFolderLease() : m_choice(chooseTemporaryFolder()) {}

TemporaryFolderLease::~TemporaryFolderLease()
{
    if (m_choice.madeForThisProcess) {
        QDir(path()).removeRecursively();
    }
}

QString TemporaryFolderLease::path() const
{
    return decodePath(m_choice.path);
}

void TemporaryFolderLease::prepare(Desktop& desktop) const
{
    if (!m_choice.problem.empty()) {
        const QString problem = QString::fromLocal8Bit(m_choice.problem.c_str());
        desktop.log(problem);
        desktop.alert(problem + QLatin1Char('.'));
    }
    removeOldTemporaryFiles(path(), temporaryFileLifetime);
}

} // namespace tallyvox
