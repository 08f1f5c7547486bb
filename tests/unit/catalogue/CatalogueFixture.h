#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/clsMain.h"
#include "fakes/FakeEnvironment.h"

namespace tobbin {

constexpr char kCatalogue[] = "C:\\T\\Grouping\\FileLocNames.lmz";
constexpr char kBackup[] = "C:\\T\\Grouping\\FileLocNames.bak";
constexpr char kBad[] = "C:\\T\\Grouping\\FileLocNames.bad";
constexpr char kFolders[] = "C:\\T\\Grouping\\System\\LocOfMainTargetFiles.lmz";

// One record of a catalogue file: the five strings in the file's order and seven empty ones.
inline std::string FileRecord(const std::string& name, const std::string& folder,
                              const std::string& number, const std::string& presence = "1",
                              const std::string& rank = "2") {
    std::string bytes;
    for (const std::string& text : {name, folder, number, presence, rank})
        bytes += std::string{static_cast<char>(text.size()), '\0'} + text;
    return bytes + std::string(14, '\0');
}

class Catalogue : public testing::Test {
 protected:
    FakeEnvironment fake;
    clsINI settings{fake.environment, "C:\\T\\"};
    SortCity sorter{fake.text};
    FakeProgress progress;
    clsMain catalogue{fake.environment, settings, sorter, progress};

    void SetUp() override { fake.disk.AddFolder("C:\\T\\Grouping\\System"); }

    bool Load(const std::string& file, std::int32_t count) {
        fake.disk.AddFile(kCatalogue, file);
        settings.NumerOfRecordsInTheMain(count);
        return catalogue.LoadMain();
    }
    // Appends a present song whose file is there.
    void Add(const std::string& folder, const std::string& name) {
        fake.disk.AddFile(folder + name);
        catalogue.OnSongFound(folder, name);
    }
    // "folder|name|presence|number|rank" of a record.
    std::string Row(std::int32_t record) const {
        std::string row = catalogue.Mp3Info(1, record);
        for (int field = 2; field <= 5; ++field)
            row += "|" + catalogue.Mp3Info(field, record);
        return row;
    }
    std::vector<std::string> Rows() const {
        std::vector<std::string> rows;
        for (std::int32_t record = 1; record <= catalogue.UBoundOfMp3Array(); ++record)
            rows.push_back(Row(record));
        return rows;
    }
    using Texts = std::vector<std::string>;
};

}  // namespace tobbin
