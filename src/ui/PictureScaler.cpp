#include "ui/PictureScaler.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tobbin {
namespace {

std::uint32_t Pixel(const float* color) {
    const auto part = [](float value) {
        return static_cast<std::uint32_t>(std::clamp(value + 0.5F, 0.0F, 255.0F));
    };
    return part(color[0]) << 16 | part(color[1]) << 8 | part(color[2]);
}

// Between which two places of `from` a place of `to` lies, and how far behind the first, in 256ths.
struct Between {
    int first, second, part;
};
Between PlaceIn(int place, int from, int to) {
    const double at = std::clamp((place + 0.5) * from / to - 0.5, 0.0, from - 1.0);
    const int first = static_cast<int>(at);
    return {first, std::min(first + 1, from - 1), static_cast<int>((at - first) * 256)};
}

std::uint32_t Mixed(std::uint32_t a, std::uint32_t b, int part) {
    std::uint32_t result = 0;
    for (int shift = 0; shift <= 16; shift += 8) {
        const int from = static_cast<int>(a >> shift & 0xFF);
        const int to = static_cast<int>(b >> shift & 0xFF);
        result |= static_cast<std::uint32_t>((from * (256 - part) + to * part + 128) / 256)
                  << shift;
    }
    return result;
}

}  // namespace

PictureShrinker::PictureShrinker(PictureSize from, PictureSize to)
    : m_result(to),
      m_columns(SharesOf(from.width, to.width)),
      m_rows(SharesOf(from.height, to.height)),
      m_line(static_cast<std::size_t>(to.width + 1) * 3),
      m_current(m_line.size()),
      m_next(m_line.size()) {}

std::vector<PictureShrinker::Shares> PictureShrinker::SharesOf(int from, int to) {
    std::vector<Shares> shares(static_cast<std::size_t>(from));
    const double length = static_cast<double>(to) / from;
    for (int i = 0; i < from; ++i) {
        const double begin = i * length;
        Shares& each = shares[static_cast<std::size_t>(i)];
        each.at = std::min(static_cast<int>(begin), to - 1);
        const double share = std::min(length, each.at + 1 - begin);
        each.share = static_cast<float>(share);
        each.rest = each.at + 1 < to ? static_cast<float>(length - share) : 0.0F;
    }
    return shares;
}

// Each row is first made as narrow as the result, which leaves little to do for its height.
void PictureShrinker::AddRow(std::span<const std::uint32_t> row) {
    std::ranges::fill(m_line, 0.0F);
    for (std::size_t x = 0; x < m_columns.size(); ++x) {
        const Shares& shares = m_columns[x];
        float* const to = &m_line[static_cast<std::size_t>(shares.at) * 3];
        const float color[3] = {static_cast<float>(row[x] >> 16 & 0xFF),
                                static_cast<float>(row[x] >> 8 & 0xFF),
                                static_cast<float>(row[x] & 0xFF)};
        for (int i = 0; i < 3; ++i)
            to[i] += color[i] * shares.share;
        if (shares.rest > 0)
            for (int i = 0; i < 3; ++i)
                to[i + 3] += color[i] * shares.rest;
    }
    const Shares& shares = m_rows[static_cast<std::size_t>(m_row++)];
    while (m_done < shares.at)
        FinishRow();
    for (std::size_t i = 0; i < m_line.size(); ++i)
        m_current[i] += m_line[i] * shares.share;
    if (shares.rest > 0)
        for (std::size_t i = 0; i < m_line.size(); ++i)
            m_next[i] += m_line[i] * shares.rest;
    if (m_row == static_cast<int>(m_rows.size()))
        FinishRow();
}

void PictureShrinker::FinishRow() {
    std::uint32_t* const to = m_result.Row(m_done++);
    for (int x = 0; x < m_result.size.width; ++x)
        to[x] = Pixel(&m_current[static_cast<std::size_t>(x) * 3]);
    std::swap(m_current, m_next);
    std::ranges::fill(m_next, 0.0F);
}

PicturePixels Enlarged(const PicturePixels& picture, PictureSize to) {
    PicturePixels result(to);
    for (int y = 0; y < to.height; ++y) {
        const Between row = PlaceIn(y, picture.size.height, to.height);
        const std::uint32_t* const upper = picture.Row(row.first);
        const std::uint32_t* const lower = picture.Row(row.second);
        for (int x = 0; x < to.width; ++x) {
            const Between column = PlaceIn(x, picture.size.width, to.width);
            result.Row(y)[x] =
                Mixed(Mixed(upper[column.first], upper[column.second], column.part),
                      Mixed(lower[column.first], lower[column.second], column.part), row.part);
        }
    }
    return result;
}

}  // namespace tobbin
