#pragma once

#include <string>
#include <vector>

#include "platform/Environment.h"

namespace tobbin {

// What the tips dialog `frmTip` needs of its window.
class TipView {
 public:
    virtual ~TipView() = default;
    virtual void ShowTip(const std::string& text) = 0;  // lblTipText
    virtual void TickTipsAtStartUp(bool ticked) = 0;    // chkLoadTipsAtStartup
};

// The tips of the day: the lines of "TIPOFDAY.TXT" in the application folder, in UTF-8 or ANSI,
// shown one at a time in no order.
class Tips {
 public:
    // `applicationFolder` ends in "\".
    Tips(Environment& environment, std::string applicationFolder)
        : m_environment(environment), m_applicationFolder(std::move(applicationFolder)) {}

    // Whether the dialog opens at all: from the menu always, at start-up unless it is turned off.
    bool MayOpen() const { return m_openNoMatterWhat || TipsAtStartUp(); }
    void OpenNoMatterWhat(bool open) { m_openNoMatterWhat = open; }

    // The dialog is there. Without a tips file it says how to make one; an empty one leaves the
    // label as it is.
    void Load(TipView& view);
    void OnNextTip(TipView& view);
    void OnTipsAtStartUpClicked(bool ticked);

 private:
    bool TipsAtStartUp() const;

    Environment& m_environment;
    std::string m_applicationFolder;
    bool m_openNoMatterWhat = false;
    std::vector<std::string> m_tips;
};

}  // namespace tobbin
