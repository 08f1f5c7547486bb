#pragma once

#include <cstdint>
#include <string>

#include "platform/Environment.h"
#include "util/SortCity.h"
#include "util/StringTable.h"

namespace tobbin {

// The "*.jpg" files of one folder, lower-cased and sorted, and which of them is the current one.
// Rows count from 1.
class PictureList {
 public:
    // Reads the folder of a picture anew and makes the picture the current one; the first when the
    // folder doesn't hold it. Empty when the path names no file or the folder holds no picture.
    void Read(Environment& environment, SortCity& sorter, const std::string& picture);

    bool IsEmpty() const { return m_names.UpperRow() < 1; }
    std::int32_t Count() const { return m_names.UpperRow(); }

    // To the next or the previous picture; behind the last comes the first.
    void Step(bool forward) { m_current = Neighbor(forward); }

    // The full path of the current picture, and of the one that a step would make current. The list
    // is not empty.
    std::string Current() const { return PathOf(m_current); }
    std::string Beside(bool forward) const { return PathOf(Neighbor(forward)); }

 private:
    std::int32_t Neighbor(bool forward) const;
    std::string PathOf(std::int32_t row) const { return m_folder + m_names.At(1, row); }

    std::string m_folder;  // ends in "\"
    StringTable m_names{1, 1, 1, 0};
    std::int32_t m_current = 1;
};

}  // namespace tobbin
