#pragma once

#include <string>
#include <vector>

#include "search/PlayerDiscovery.h"

namespace tobbin {

class FakePlayerLocation : public PlayerLocation {
 public:
    std::string path = "as before";
    std::string PlayerPath() const override { return path; }
    void OnPlayerFound(const std::string& found) override { path = found; }
};

// Writes down its texts, and "open" and "closed", in `texts`; stopped while `stops`.
class FakeSearchingWindow : public SearchingWindow {
 public:
    FakeSearchingWindow(std::vector<std::string>& texts, bool& stops)
        : m_texts(texts), m_stops(stops) {}
    void Open() override { m_texts.push_back("open"); }
    void Close() override { m_texts.push_back("closed"); }
    void GoOn() override { m_stops = false; }
    void Show(const std::string& text) override { m_texts.push_back(text); }
    bool StopRequested() const override { return m_stops; }

 private:
    std::vector<std::string>& m_texts;
    bool& m_stops;
};

}  // namespace tobbin
