#include "jukebox/Jukebox.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tobbin {
namespace {

// Writes down every signal, and what the tree says at that moment.
class Recorder : public JukeboxListener {
 public:
    explicit Recorder(Jukebox& jukebox) : m_jukebox(jukebox) { jukebox.AddListener(*this); }
    std::vector<std::string> heard;

    void OnFolderAdded(Folder& folder) override { heard.push_back("added " + folder.Text()); }
    void OnFolderRemoving(Folder& folder) override {
        if (m_jukebox.MaybeFind(folder.Text()) == &folder)  // still
            heard.push_back("removing " + folder.Text());
    }
    void OnFolderTextChanged(Folder& folder) override { heard.push_back("text " + folder.Text()); }
    void OnChildrenReordered(Folder*) override { heard.push_back("reordered"); }
    void OnSongsChanged(Folder& folder) override {
        heard.push_back("songs " + std::to_string(folder.Songs().size()));
    }
    void OnColumnsChanged() override { heard.push_back("columns"); }
    void OnCaptionChanged() override { heard.push_back("caption " + m_jukebox.DaCaption()); }
    void OnDirtyChanged() override { heard.push_back(m_jukebox.IsFormDirty() ? "dirty" : "clean"); }

 private:
    Jukebox& m_jukebox;
};

TEST(Jukebox, FindsTheTopLevelFolderFirstAndTextsExactly) {
    Jukebox jukebox;
    Folder& mood = jukebox.AddChild(nullptr, "By Mood");
    Folder& lower = jukebox.AddChild(&mood, "Year");
    EXPECT_EQ(jukebox.MaybeFind("Year"), &lower);
    Folder& top = jukebox.AddChild(nullptr, "Year");
    EXPECT_EQ(jukebox.MaybeFind("Year"), &top);
    EXPECT_EQ(jukebox.MaybeFind("year"), nullptr);
    EXPECT_EQ(mood.MaybeChild("Year"), &lower);
}

TEST(Jukebox, TellsEachChangeOnceAndBecomesDirty) {
    Jukebox jukebox;
    Recorder recorder(jukebox);
    jukebox.DaCaption("MIX");
    jukebox.AddColumn("Key");
    EXPECT_FALSE(jukebox.IsFormDirty());
    Folder& a = jukebox.AddChild(nullptr, "a");
    jukebox.SetText(a, "b");
    const SongItem item = jukebox.MakeItem("one.mp3", 7, 2);
    jukebox.AppendSongs(a, {item, item});
    jukebox.AppendSongs(a, {});
    jukebox.IsFormDirty(false);
    jukebox.SetSongs(a, {item});
    jukebox.Remove(a);
    EXPECT_EQ(recorder.heard,
              (std::vector<std::string>{"caption MIX", "columns", "added a", "dirty", "text b",
                                        "songs 2", "clean", "songs 1", "dirty", "removing b"}));
    EXPECT_EQ(jukebox.TextOf(item), "one.mp3");
    EXPECT_EQ(item.recordNumber, 7);
}

TEST(Jukebox, AListenerMayRemoveAnotherWhileItIsTold) {
    struct Remover : JukeboxListener {
        Jukebox* jukebox = nullptr;
        JukeboxListener* other = nullptr;
        void OnFolderAdded(Folder&) override { jukebox->RemoveListener(*other); }
    };
    Jukebox jukebox;
    Remover remover;
    jukebox.AddListener(remover);
    Recorder recorder(jukebox);
    remover.jukebox = &jukebox;
    remover.other = &recorder;
    jukebox.AddChild(nullptr, "a");
    EXPECT_TRUE(recorder.heard.empty());
}

}  // namespace
}  // namespace tobbin
