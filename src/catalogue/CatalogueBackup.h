#pragma once

#include <string>

#include "platform/Environment.h"

namespace tobbin {

// The copy FileLocNames.bak beside the catalogue file: the catalogue as it was before a pass took
// songs out of it. A copy gives way only to one with at least as many present songs, or when it is
// over 30 days old, so that one bad start can't push out the last good state.
class CatalogueBackup {
 public:
    CatalogueBackup(Environment& environment, std::string cataloguePath);

    // Copies the catalogue file as it stands on the disk, where the rule wants it. Returns whether
    // a copy is there that the rule is content with, or there is nothing to copy; when not, the
    // status line says why.
    bool Keep();

    std::string Path() const;

 private:
    DiskStatus CopyWhereWanted();

    Environment& m_environment;
    std::string m_cataloguePath;
};

}  // namespace tobbin
