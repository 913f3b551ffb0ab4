// The player's own pictures on the screens: adding files (dropped on the
// window, named on the command line, found in the pictures folder) with a
// notice for each one that could not be added; the game that opens one; and
// the parts of the level select's "Your pictures" section.
#pragma once

#include <string>
#include <vector>

#include "ui/game.h"
#include "ui/input.h"

namespace ui {

// Imports the files, in order. The ids of those added or already there.
std::vector<std::string> addPictures(const std::vector<std::string>& files);
// Imports the files of the pictures folder not looked at before.
void addPicturesFolder();
// The playing state that opens the picture: its saved puzzle when there is
// one, else a new puzzle at the difficulty the settings name (a saved
// puzzle of another level is dropped, as a new puzzle drops it).
GameState pictureGame(const std::string& id);

// The level select's section heading: title, hint and the button that opens
// the pictures folder in the file manager.
inline constexpr double kPictureSectionH = 64;
void pictureSection(Ctx& ctx, const Rect& r);
// The remove button in the corner of a picture's thumbnail; true when clicked.
bool removePictureButton(Ctx& ctx, const Rect& thumb);
// The question before a picture goes: 1 removed (and a saved puzzle of it
// with it), -1 kept, 0 not yet answered.
int askRemovePicture(Ctx& ctx, const std::string& id);

}  // namespace ui
