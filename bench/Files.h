#pragma once

#include <string>

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

// The floors of loading and saving: seconds for reading a file's bytes, and for writing as many
// beside it and flushing them, as every save does.
double ReadPlainly(const std::string& path);
double WritePlainly(const std::string& path);

}  // namespace tobbin
