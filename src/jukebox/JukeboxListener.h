#pragma once

#include "jukebox/Folder.h"

namespace tobbin {

// Hears of each change after it was made; does nothing by default. A null folder stands for the
// (invisible) root.
class JukeboxListener {
 public:
    virtual ~JukeboxListener() = default;
    virtual void OnFolderAdded(Folder& /*folder*/) {}     // with all that is in it
    virtual void OnFolderRemoving(Folder& /*folder*/) {}  // the same; still in the tree
    virtual void OnFolderTextChanged(Folder& /*folder*/) {}
    virtual void OnChildrenReordered(Folder* /*parent*/) {}
    virtual void OnSongsChanged(Folder& /*folder*/) {}
    // What comes between is the work of one grouping run.
    virtual void OnFillingBegins() {}
    virtual void OnFillingEnds() {}
    virtual void OnRanksChanged() {}  // of songs in the catalogue
    virtual void OnRecordsMoved() {}  // in the catalogue; the jukebox has followed them
    virtual void OnColumnsChanged() {}
    virtual void OnCaptionChanged() {}
    virtual void OnDirtyChanged() {}
};

}  // namespace tobbin
