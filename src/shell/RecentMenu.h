#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalogue/clsINI.h"

namespace tobbin {

// The recent jukeboxes at the end of the File menu, `mnuTheFiles`: element 0 is a separator,
// elements 1 to 3 show the newest, the second and the third. An element once there stays.
class RecentMenu {
 public:
    static constexpr std::size_t kMost = 3;

    // `UpdateTheMenuControlArray`: takes the entries from the settings. An entry that has become
    // empty leaves its caption and those behind it as they were.
    void Update(const clsINI& settings);

    // The captions of the elements from 1 on; with the first one comes the separator.
    const std::vector<std::string>& Captions() const { return m_captions; }

    // A caption of more than 45 characters is its first 20, " .... " and its last 25.
    static std::string Shortened(std::string_view caption);

 private:
    std::vector<std::string> m_captions;
};

// The path of element `number` (1 to 3); empty when there is none.
std::string RecentPath(const clsINI& settings, int number);

}  // namespace tobbin
