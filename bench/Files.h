#pragma once

#include <string>

#include "Rows.h"

namespace tobbin {

// A folder that is there as long as the object.
class TemporaryFolder {
 public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    const std::string& Path() const { return m_path; }

 private:
    std::string m_path;
};

// The floors of loading and saving: the time for reading a file's bytes, and for writing as many
// beside it and flushing them, as every save does.
Time ReadPlainly(const std::string& path);
Time WritePlainly(const std::string& path);

}  // namespace tobbin
