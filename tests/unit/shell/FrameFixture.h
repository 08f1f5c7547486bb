#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "fakes/FakeEnvironment.h"
#include "fakes/FakeJukeboxView.h"
#include "fakes/FakeSearching.h"
#include "jukebox/InitialJukebox.h"
#include "shell/Application.h"
#include "shell/FrameCommands.h"

namespace tobbin {

// A main frame without windows: keeps jukebox windows, the last one opened being the active one,
// and writes down everything else.
class FakeFrame : public FrameView {
 public:
    struct Child {
        std::unique_ptr<JukeboxWindow> window;
        std::unique_ptr<FakeJukeboxView> view;
    };
    Application& application;
    FakeJukeboxWindowHost host;
    std::vector<Child> children;
    bool panelOpen = false;
    bool panelActive = false;
    bool playerIsKnown = false;
    int playerChecks = 0;
    std::vector<std::string> seen;
    std::vector<std::string> searchTexts;
    bool stopsSearch = false;

    explicit FakeFrame(Application& owner) : application(owner) {}

    JukeboxWindow* MaybeActiveJukebox() const override {
        if (panelActive)
            return nullptr;
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            if (!child->view->closed)
                return child->window.get();
        return nullptr;
    }
    JukeboxWindow* MaybeVisibleJukebox(
        const std::function<bool(const JukeboxWindow&)>& which) const override {
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            if (child->view->visible && which(*child->window))
                return child->window.get();
        return nullptr;
    }
    bool HasChildren() const override { return panelOpen || MaybeActiveJukebox() != nullptr; }
    bool HasMinimizedChildren() const override {
        return std::ranges::count(seen, "minimize panel") > 0;
    }
    void OpenJukeboxWindow(Jukebox& jukebox) override {
        Child& child = children.emplace_back();
        child.window = std::make_unique<JukeboxWindow>(application.Tools(), jukebox, host);
        child.view = std::make_unique<FakeJukeboxView>();
        child.view->controller = child.window.get();
        child.window->SetView(child.view.get());
        child.window->SelectFirstFolder();
        child.window->OnOpened();
    }
    bool PlayerCheck() override {
        ++playerChecks;
        return playerIsKnown;
    }
    int JukeboxWindowsOpened() const override { return static_cast<int>(children.size()); }
    void MinimizePlayerPanel() override {
        if (panelOpen)
            seen.push_back("minimize panel");
    }
    void MinimizeActivePlayerPanel() override {
        if (panelActive)
            MinimizePlayerPanel();
        panelActive = false;
    }
    void Arrange(Arrangement arrangement) override {
        const char* const names[] = {"cascade", "tile", "icons"};
        seen.push_back(names[static_cast<int>(arrangement)]);
    }
    void ShowAbout() override { seen.push_back("about"); }
    void ShowTips() override { seen.push_back("tips"); }
    void ShowFind() override { seen.push_back("find"); }
    std::unique_ptr<SearchingWindow> MakeSearchingWindow() override {
        return std::make_unique<FakeSearchingWindow>(searchTexts, stopsSearch);
    }
    void CloseFrame() override { seen.push_back("close frame"); }
};

// The program behind its main frame, with the songs C:\M\a.mp3 to C:\M\c.mp3 and no jukebox.
class FrameTest : public testing::Test {
 protected:
    FakeEnvironment fake;
    Application application{fake.environment,
                            {"C:\\App\\", "C:\\Windows\\System32\\", "C:\\Temp\\"}};
    FakeFrame frame{application};
    FrameCommands commands{application, frame};

    FrameTest() {
        fake.disk.AddFolder("C:\\App\\Grouping\\System");
        fake.disk.AddFolder("C:\\Temp");
        application.Settings().CreateNewIniFile(application.Settings().SettingsPath());
        for (const char* name : {"a.mp3", "b.mp3", "c.mp3"}) {
            fake.disk.AddFile(std::string("C:\\M\\") + name, "no tag");
            application.Catalogue().OnSongFound("C:\\M\\", name);
        }
        application.Catalogue().WriteOutMp3DirectoryLocations();
    }

    JukeboxWindow& OpenSample() {
        Jukebox& jukebox = application.AddJukebox(std::make_unique<Jukebox>());
        BuildInitialJukebox(jukebox, application.Groups(), application.LongWork());
        frame.OpenJukeboxWindow(jukebox);
        return *frame.children.back().window;
    }
    std::string LastBox() const {
        return fake.dialogs.boxes.empty() ? "" : fake.dialogs.boxes.back().text;
    }
    std::string LastLine() const {
        return fake.statusLine.lines.empty() ? "" : fake.statusLine.lines.back();
    }
};

}  // namespace tobbin
