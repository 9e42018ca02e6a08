#pragma once

#include "support/TemporaryFolder.h"

#include <QString>

namespace tallyvox {

class Desktop;

/// The private temporary folder of this run. One made for this process alone is removed
/// with everything in it when the process ends.
class TemporaryFolderLease {
public:
    TemporaryFolderLease();
    ~TemporaryFolderLease();
    TemporaryFolderLease(const TemporaryFolderLease&) = delete;
    TemporaryFolderLease& operator=(const TemporaryFolderLease&) = delete;

    QString path() const;

    /// Says once what was wrong with the usual folder, and drops copies of selected text
    /// that are older than their lifetime.
    void prepare(Desktop& desktop) const;

private:
    TemporaryFolderChoice m_choice;
};

} // namespace tallyvox
