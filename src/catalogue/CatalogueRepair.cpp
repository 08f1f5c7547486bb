#include "catalogue/CatalogueRepair.h"

#include "catalogue/CatalogueBackup.h"
#include "catalogue/CatalogueFile.h"

namespace tobbin {
namespace {

class CatalogueRepair {
 public:
    CatalogueRepair(Environment& environment, clsINI& settings, clsMain& catalogue)
        : m_environment(environment),
          m_settings(settings),
          m_catalogue(catalogue),
          m_path(catalogue.CataloguePath()) {}

    CatalogueStart Load() {
        const bool expectsSongs = m_settings.NumerOfRecordsInTheMain() > 0;
        if (expectsSongs && m_catalogue.LoadMain() && LastRecordIsInUse())
            return {CatalogueFinding::Loaded, "", ""};
        // Something doesn't agree, so the file itself is looked at.
        std::string file;
        if (const DiskStatus status =
                ReadWholeFile(m_environment.disk, m_path, kLargestCatalogue, file);
            !status.Ok()) {
            if (status.Error() == DiskError::NotFound)
                return WithoutSongs(expectsSongs, "is not there any more");
            return Unreadable();
        }
        const CatalogueSummary summary = SummariseCatalogue(file);
        if (summary.damage)
            return Damaged(file, summary);
        if (summary.songs == 0)
            return WithoutSongs(expectsSongs, "holds no songs any more");
        return LoadWithCount(summary.songs) ? CatalogueStart{CatalogueFinding::Loaded, "", ""}
                                            : Unreadable();
    }

 private:
    bool LastRecordIsInUse() const {
        const std::int32_t last = m_catalogue.UBoundOfMp3Array();
        return !m_catalogue.Mp3Info(clsMain::kFileName, last).empty();
    }

    // Takes the count over and loads again; saves the settings when that went well.
    bool LoadWithCount(std::int32_t count) {
        m_settings.NumerOfRecordsInTheMain(count);
        const bool loaded = m_catalogue.LoadMain();
        if (loaded)
            m_settings.Save(m_settings.SettingsPath());
        return loaded;
    }

    CatalogueStart WithoutSongs(bool expectsSongs, const std::string& what) {
        m_settings.NumerOfRecordsInTheMain(0);
        m_catalogue.LoadMain();  // Empties the table.
        const std::string backupPath = CatalogueBackup(m_environment, m_path).Path();
        const std::string copy = RecordsOfTheCopy();
        if (const std::int32_t songs = SummariseCatalogue(copy).songs;
            songs > 0 && SaveWholeFile(m_environment.disk, m_path, copy).Ok() &&
            LoadWithCount(songs))
            return {CatalogueFinding::Gone,
                    Sentence(what) + "  Its earlier copy \"" + backupPath +
                        "\" has taken its place, with the songs and ranks that it knows.",
                    ""};
        if (!expectsSongs)
            return {};
        std::string message = Sentence(what);
        PathInfo backup;
        if (m_environment.disk.Stat(backupPath, backup).Ok() && backup.kind == PathKind::File)
            message += "  An earlier copy of it is kept as \"" + backupPath + "\".";
        return {CatalogueFinding::Gone, message, ""};
    }

    CatalogueStart Unreadable() {
        m_catalogue.LoadMain();
        return {CatalogueFinding::Unreadable, m_catalogue.LastLoad().message, ""};
    }

    CatalogueStart Damaged(const std::string& file, const CatalogueSummary& summary) {
        const std::string salvaged = SalvageCatalogue(file);
        const std::string good = MergeCatalogues(salvaged, RecordsOfTheCopy());
        const std::int32_t songs = SummariseCatalogue(good).songs;
        const std::int32_t fromCopy = songs - SummariseCatalogue(salvaged).songs;
        CatalogueStart start{CatalogueFinding::Damaged, Sentence("is " + summary.damage->Words()),
                             ""};
        std::string keptAs;
        DiskStatus status =
            songs == 0 ? KeepDamagedFileAside(m_environment.disk, m_path, keptAs)
                       : KeepCopyAside(m_environment.disk, m_path, kLargestCatalogue, keptAs);
        if (status.Ok()) {
            start.keptAs = keptAs;
            start.message += "  It is kept as \"" + keptAs + "\".";
            if (songs > 0)
                status = SaveWholeFile(m_environment.disk, m_path, good);
        }
        if (!status.Ok())
            start.message += "  It could not be mended: " + status.Reason() + ".";
        const std::int32_t loadable = status.Ok() ? songs : summary.songs;
        start.message += "  Songs that could be read: " +
                         std::to_string(status.Ok() ? loadable - fromCopy : loadable) + ".";
        if (status.Ok() && fromCopy > 0)
            start.message += "  Songs that its earlier copy \"" +
                             CatalogueBackup(m_environment, m_path).Path() +
                             "\" knows besides: " + std::to_string(fromCopy) + ".";
        LoadWithCount(loadable);
        return start;
    }

    // What can be read of the copy FileLocNames.bak; empty without one.
    std::string RecordsOfTheCopy() {
        std::string copy;
        const std::string path = CatalogueBackup(m_environment, m_path).Path();
        return ReadWholeFile(m_environment.disk, path, kLargestCatalogue, copy).Ok()
                   ? SalvageCatalogue(copy)
                   : std::string();
    }

    std::string Sentence(const std::string& what) const {
        return "The song catalog \"" + m_path + "\" " + what + ".";
    }

    Environment& m_environment;
    clsINI& m_settings;
    clsMain& m_catalogue;
    std::string m_path;
};

}  // namespace

CatalogueStart LoadCatalogueAtStart(Environment& environment, clsINI& settings,
                                    clsMain& catalogue) {
    return CatalogueRepair(environment, settings, catalogue).Load();
}

}  // namespace tobbin
