#include "catalogue/CatalogueBackup.h"

#include <utility>

#include "catalogue/CatalogueFile.h"

namespace tobbin {
namespace {
constexpr std::int64_t kSecondsKept = std::int64_t{30} * 24 * 60 * 60;
}

CatalogueBackup::CatalogueBackup(Environment& environment, std::string cataloguePath)
    : m_environment(environment), m_cataloguePath(std::move(cataloguePath)) {}

std::string CatalogueBackup::Path() const {
    return m_cataloguePath.substr(0, m_cataloguePath.rfind('.')) + ".bak";
}

bool CatalogueBackup::Keep() {
    const DiskStatus status = CopyWhereWanted();
    if (!status.Ok())
        m_environment.statusLine.Say("The copy \"" + Path() +
                                     "\" of the song catalog was not made: " + status.Reason() +
                                     ".");
    return status.Ok();
}

DiskStatus CatalogueBackup::CopyWhereWanted() {
    std::string catalogue;
    DiskStatus status =
        ReadWholeFile(m_environment.disk, m_cataloguePath, kLargestCatalogue, catalogue);
    if (status.Error() == DiskError::NotFound)
        return {};
    PathInfo backup;
    if (status.Ok())
        status = m_environment.disk.Stat(Path(), backup);
    if (!status.Ok())
        return status;
    if (backup.kind == PathKind::File &&
        m_environment.clock.UnixTime() - backup.modifiedTime <= kSecondsKept) {
        std::string old;
        if (status = ReadWholeFile(m_environment.disk, Path(), kLargestCatalogue, old);
            !status.Ok())
            return status;
        if (SummariseCatalogue(old).presentSongs > SummariseCatalogue(catalogue).presentSongs)
            return {};
    }
    return SaveWholeFile(m_environment.disk, Path(), catalogue);
}

}  // namespace tobbin
