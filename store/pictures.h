// The player's own pictures: any photo imported becomes a level after the
// forty built-in ones. Each is kept in the data folder (core::pictureLevelDir)
// as its prepared picture and blurred copy (platform/photo.h), named by an id
// from the hash of the file's bytes, so the same photo added twice is one
// level and the original may move or go. An index there lists them in the
// order they came, with the names they came with, and remembers which files
// of the "pictures" folder were already looked at. Everything is written to
// a temporary name and renamed into place; a failed import leaves nothing.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace store {

enum class ImportStatus { Added, Known, Unreadable, NotPicture, Damaged, TooSmall, TooLarge, NotStored };

struct ImportResult {
  ImportStatus status = ImportStatus::Unreadable;
  std::string id;  // the level's id when Added or Known
};

// Reads the index and hands the pictures whose files are there to the
// catalogue (core::setPictureLevels); once per process, and before any
// other function here does anything.
void loadPictures();
// "photo-" and 16 hex digits of the BLAKE2b hash of a file's bytes.
std::string pictureId(const std::string& bytes);
ImportResult importPicture(const std::string& path);
// Its files and its entry go; a file of the pictures folder it came from is
// not imported again (until that file changes). False for an unknown id.
bool removePicture(const std::string& id);
// The folder the player puts pictures in, created on first use.
const std::string& picturesFolder();
// Imports every file of the pictures folder that was not looked at before
// (by name, size and time): the file names with their results.
std::vector<std::pair<std::string, ImportResult>> importPicturesFolder();

}  // namespace store
