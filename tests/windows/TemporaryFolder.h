#pragma once

#include <string>

#include "platform/Disk_win32.h"

namespace tobbin {

// A folder of the test's own in the user's temporary folder, removed with all in it at the end.
class TemporaryFolder {
 public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    // The full path of a name in it; with "" the folder's own, with "\" at its end.
    std::string operator/(const std::string& name) const { return m_path + name; }

 private:
    std::string m_path;
};

// The whole content of a file; a failure of the test when it can't be read.
std::string Content(const std::string& path);
void WriteFileWith(const std::string& path, const std::string& content);

}  // namespace tobbin
