#pragma once

#include <memory>
#include <string>
#include <vector>

#include "jukebox/JukeboxChange.h"

namespace tobbin {

// The changes that the editing commands are made of. Null for a parent means the top level; each
// holds no more than what the change moves.

// Puts a folder with all in it at a place among a parent's children.
std::unique_ptr<JukeboxChange> PutFolder(std::unique_ptr<Folder> folder, Folder* parent,
                                         std::size_t index);
// Takes a folder out of the tree. It stays the same object while it is out. Of a folder that was
// just put in, this is also the change that is already done.
std::unique_ptr<JukeboxChange> TakeFolder(Folder& folder);
// Makes a folder the last child of another parent, which must not be inside it.
std::unique_ptr<JukeboxChange> MoveFolder(Folder& folder, Folder* newParent);
std::unique_ptr<JukeboxChange> RenameFolder(Folder& folder, std::string text);
// Child k becomes what is child order[k] now.
std::unique_ptr<JukeboxChange> OrderChildren(Folder* parent, std::vector<std::size_t> order);

// The same for the songs of a folder; rows ascending. New songs go before a row, or to the end.
std::unique_ptr<JukeboxChange> TakeSongs(Folder& folder, std::vector<std::size_t> rows);
std::unique_ptr<JukeboxChange> InsertSongs(Folder& folder, std::vector<SongItem> songs,
                                           std::size_t before);
std::unique_ptr<JukeboxChange> AppendSongs(Folder& folder, std::vector<SongItem> songs);
// Songs that a folder has at its end already: made done, so that the first flip takes them out.
std::unique_ptr<JukeboxChange> AppendedSongs(Folder& folder, std::size_t firstRow);
std::unique_ptr<JukeboxChange> OrderSongs(Folder& folder, std::vector<std::size_t> order);

// Gives a folder other songs. Holds all of them.
std::unique_ptr<JukeboxChange> ReplaceSongs(Folder& folder, std::vector<SongItem> songs);

// Several changes, in order, with nothing of them to be shown.
std::unique_ptr<JukeboxChange> Together(std::vector<std::unique_ptr<JukeboxChange>> changes);

// Gives a variable that outlives the change another value.
std::unique_ptr<JukeboxChange> ChangeValue(int& variable, int value);

}  // namespace tobbin
