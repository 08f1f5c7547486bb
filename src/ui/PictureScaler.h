#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "ui/PicturePixels.h"

namespace tobbin {

// Makes a picture smaller while its rows come in, from the top: each pixel of the result is the
// mean of the area that it stands for. Needs the memory of the result and of three rows.
class PictureShrinker {
 public:
    // The result is no wider and no higher than what comes in.
    PictureShrinker(PictureSize from, PictureSize to);

    void AddRow(std::span<const std::uint32_t> row);

    // After the last row.
    PicturePixels Take() { return std::move(m_result); }

 private:
    // What a column or row gives to the result: `share` to the place `at`, `rest` to the next.
    struct Shares {
        int at = 0;
        float share = 0;
        float rest = 0;
    };
    static std::vector<Shares> SharesOf(int from, int to);
    void FinishRow();

    PicturePixels m_result;
    std::vector<Shares> m_columns, m_rows;
    // Red, green, blue of each pixel of a row: of what came in last, and of two of the result.
    std::vector<float> m_line, m_current, m_next;
    int m_row = 0;   // of those that come in
    int m_done = 0;  // of the result
};

// Makes a picture larger, with smooth transitions.
PicturePixels Enlarged(const PicturePixels& picture, PictureSize to);

}  // namespace tobbin
