// Release data of the game, shared by the command line, the crash report and
// the footer so that every place prints the same version.
#pragma once

namespace platform {

inline constexpr const char* kAppTitle = "Quillmoss's Puzzle";
inline constexpr const char* kAppVersion = "1.1.0";
inline constexpr int kAppBuild = 1000;
inline constexpr const char* kSourceLabel = "1.1 Build 1299";
inline constexpr const char* kSupportEmail = "support@quillmoss.software";
// Folder name under the per-user data and cache directories, and the stem of
// the crash report's file name.
inline constexpr const char* kAppDirName = "tessellatrix";

}  // namespace platform
