#include "platform/WindowBase_win32.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/Twips_win32.h"
#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

class Frame : public WindowBase {
 public:
    Frame() {
        EXPECT_TRUE(Create({.name = L"TobbinTestFrame"}, "frame", {.width = 600, .height = 400}));
    }
    ~Frame() override { Destroy(); }
    HWND client = nullptr;

 protected:
    bool OnCreate() override {
        CLIENTCREATESTRUCT creation = {nullptr, 1000};
        client = CreateWindowExW(0, L"MDICLIENT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 500, 300,
                                 Handle(), nullptr, GetModuleHandleW(nullptr), &creation);
        return true;
    }
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) override {
        return DefFrameProcW(Handle(), client, message, wParam, lParam);
    }
};

class Child : public WindowBase {
 public:
    Child(const Frame& frame, std::vector<UINT>& messages) : m_messages(messages) {
        EXPECT_TRUE(Create({.name = L"TobbinTestChild"}, "child",
                           {.exStyle = WS_EX_MDICHILD, .parent = frame.client}));
    }
    ~Child() override { Destroy(); }

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        m_messages.push_back(message);
        return WindowBase::HandleMessage(message, wParam, lParam);
    }
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) override {
        return DefMDIChildProcW(Handle(), message, wParam, lParam);
    }

 private:
    std::vector<UINT>& m_messages;
};

TEST(WindowBase, MdiChildrenSeeTheirWholeLife) {
    Frame frame;
    const auto active = [&] {
        return reinterpret_cast<HWND>(SendMessageW(frame.client, WM_MDIGETACTIVE, 0, 0));
    };
    std::vector<UINT> first, second;
    Child stays(frame, first);
    {
        Child goes(frame, second);
        EXPECT_EQ(active(), goes.Handle());
        EXPECT_EQ(WindowText(goes.Handle()), "child");
    }
    ASSERT_FALSE(second.empty());
    EXPECT_EQ(second.front(), static_cast<UINT>(WM_NCCREATE));
    EXPECT_EQ(second.back(), static_cast<UINT>(WM_NCDESTROY));
    EXPECT_EQ(active(), stays.Handle());  // The client window knows that the other is gone.

    frame.Destroy();
    EXPECT_EQ(frame.Handle(), nullptr);
    EXPECT_EQ(stays.Handle(), nullptr);
    EXPECT_EQ(first.back(), static_cast<UINT>(WM_NCDESTROY));
}

TEST(Twips, AreMeasuredInTheWindowsInches) {
    Frame frame;
    const int dpi = static_cast<int>(GetDpiForWindow(frame.Handle()));
    EXPECT_EQ(TwipsToPixels(1440, frame.Handle()), dpi);
    EXPECT_EQ(PixelsToTwips(dpi * 2, frame.Handle()), 2880);
}

}  // namespace
}  // namespace tobbin
