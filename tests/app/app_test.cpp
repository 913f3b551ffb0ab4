// The shell's own rules: the command line, where the window opens, what each
// event does, when frames are drawn and how the loop sleeps.
#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "app/cmdline.h"
#include "app/events.h"
#include "app/pacing.h"
#include "app/window_geometry.h"

namespace {

// Left to right: the first --version or --help decides; --size takes the
// next argument as its value, whatever it is; the rest are pictures.
TEST(CommandLine, OptionsApplyLeftToRight) {
  struct Case {
    std::vector<const char*> args;
    app::InfoRequest info;
    bool sized, fullscreen;
    int w, h;
    const char* pictures = "";
  };
  const Case kCases[] = {
      {{"game", "--help", "--version"}, app::InfoRequest::Help, false, false, 1280, 800},
      {{"game", "--size", "640x480", "--version"}, app::InfoRequest::Version, true, false, 640, 480},
      {{"game", "--size", "639x480"}, app::InfoRequest::None, false, false, 1280, 800},
      {{"game", "--size", "foo", "--fullscreen"}, app::InfoRequest::None, false, true, 1280, 800},
      {{"game", "--size", "--fullscreen"}, app::InfoRequest::None, false, false, 1280, 800},
      {{"game", "--fullscreen", "--windowed", "--size"}, app::InfoRequest::None, false, false, 1280, 800},
      {{"game", "--size", "1000x700", "--size", "100x100"}, app::InfoRequest::None, true, false, 1000, 700},
      {{"game", "a.jpg", "--size", "b.jpg", "", "c d.png"}, app::InfoRequest::None, false, false, 1280, 800,
       "a.jpg|c d.png|"},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(testing::PrintToString(c.args));
    const int argc = static_cast<int>(c.args.size());
    store::Settings s;
    const bool sized = app::applyWindowOptions(argc, c.args.data(), s);
    std::string pictures;
    for (const std::string& p : app::pictureArguments(argc, c.args.data())) pictures += p + "|";
    EXPECT_EQ(std::make_tuple(app::findInfoRequest(argc, c.args.data()), sized, s.fullscreen, s.windowW, s.windowH,
                              pictures),
              std::make_tuple(c.info, c.sized, c.fullscreen, c.w, c.h, std::string(c.pictures)));
  }
}

TEST(WindowGeometry, TheWindowOpensWhereItCanBeReached) {
  const SDL_Rect screen{0, 0, 1920, 1040}, second{1920, 24, 1280, 1000}, empty{0, 0, 0, 1080};
  constexpr int C = SDL_WINDOWPOS_CENTERED;
  struct Case { int x, y, w, h; bool fromCommandLine; const SDL_Rect* area; int px, py, pw, ph; };
  const Case kCases[] = {
      {100, 100, 3000, 2000, true, &screen, C, C, 3000, 2000},  // asked for: exact and centred
      {-1, -1, 3000, 2000, false, &screen, C, C, 1900, 960},    // stored: shrunk into the area
      {-1, 200, 800, 600, false, &screen, C, C, 800, 600},      // never placed: centred
      {200, -1, 800, 600, false, &screen, 200, 30, 800, 600},   // y of -1 alone is a position
      {1900, 40, 800, 600, false, &second, 1920, 54, 800, 600},  // title bar below the panel
      {3000, 900, 800, 600, false, &second, 2400, 424, 800, 600},
      {-500, -20, 5000, 4000, false, &empty, -500, -20, 5000, 4000},  // no area known
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(testing::Message() << c.x << "," << c.y << " " << c.w << "x" << c.h);
    store::Settings s;
    std::tie(s.windowX, s.windowY, s.windowW, s.windowH) = std::tie(c.x, c.y, c.w, c.h);
    const app::WindowPlacement p = app::placeWindow(s, c.fromCommandLine, c.area);
    EXPECT_EQ(std::make_tuple(p.x, p.y, p.w, p.h), std::make_tuple(c.px, c.py, c.pw, c.ph));
  }
}

// From a windowed, not maximised game. F11 and Ctrl+Q are the shell's own;
// the size of a maximised or fullscreen window is not kept.
TEST(Events, EachEventGoesWhereItBelongs) {
  struct Case { Uint32 type; int what; Uint16 mod; Uint32 flags; size_t keys; bool running, full; int w; bool max; };
  const Case kCases[] = {
      {SDL_KEYDOWN, SDLK_F11, 0, 0, 0, true, true, 1280, false},
      {SDL_KEYDOWN, SDLK_q, 0, 0, 1, true, false, 1280, false},
      {SDL_KEYDOWN, SDLK_q, KMOD_RCTRL, 0, 0, false, false, 1280, false},
      {SDL_KEYDOWN, SDLK_n, KMOD_LCTRL, 0, 1, true, false, 1280, false},  // Ctrl held with this key only
      {SDL_QUIT, 0, 0, 0, 0, false, false, 1280, false},
      {SDL_WINDOWEVENT, SDL_WINDOWEVENT_SIZE_CHANGED, 0, 0, 0, true, false, 1024, false},  // kept for next time
      {SDL_WINDOWEVENT, SDL_WINDOWEVENT_SIZE_CHANGED, 0, SDL_WINDOW_MAXIMIZED, 0, true, false, 1280, false},
      {SDL_WINDOWEVENT, SDL_WINDOWEVENT_SIZE_CHANGED, 0, SDL_WINDOW_FULLSCREEN_DESKTOP, 0, true, false, 1280, false},
      {SDL_WINDOWEVENT, SDL_WINDOWEVENT_MAXIMIZED, 0, SDL_WINDOW_MAXIMIZED, 0, true, false, 1280, true},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(testing::Message() << c.type << " " << c.what << " flags " << c.flags);
    SDL_Event e{c.type};
    if (c.type == SDL_KEYDOWN) e.key.keysym = SDL_Keysym{SDL_SCANCODE_UNKNOWN, c.what, c.mod, 0};
    if (c.type == SDL_WINDOWEVENT) std::tie(e.window.event, e.window.data1) = std::make_tuple(c.what, 1024);
    ui::Input in;
    store::Settings s;
    app::LoopState loop;
    app::handleEvent(e, 1.0, c.flags, in, s, loop);
    EXPECT_EQ(std::make_tuple(in.keys.size(), in.ctrl, loop.running, s.fullscreen, s.windowW, s.maximized),
              std::make_tuple(c.keys, c.keys > 0 && c.mod != 0, c.running, c.full, c.w, c.max));
  }
}

// The last frame began at 10 s on a 50 Hz display; the frame asked for
// {the next at once, one at a time}, {hidden, pointer moved} -> next frame.
TEST(Pacing, FramesComeWhenWantedButNeverFasterThanTheDisplayNorWhileHidden) {
  const std::tuple<bool, double, bool, bool, double> kCases[] = {
      {false, INFINITY, false, false, INFINITY}, {true, INFINITY, false, false, 10.02},
      {false, 12.5, false, false, 12.5},         {false, 10.001, false, false, 10.02},
      {false, INFINITY, false, true, 10.02},     {true, INFINITY, true, false, INFINITY},
      {true, 12.5, true, false, 12.5}};
  for (const auto& [now, at, hidden, moved, next] : kCases) {
    EXPECT_DOUBLE_EQ(app::nextFrameTime(app::Pace{10, 0.02, now, at, hidden, moved}), next) << now << at << hidden;
  }
}

// A wait of an hour ends when input arrives (or the test times out); the
// input stays queued for the frame, only pointer motion (polled) is taken.
TEST(Pacing, AWaitEndsWhenInputArrives) {
  ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO | SDL_INIT_TIMER), 0);
  static Uint32 s_type;
  for (const auto& [type, wake, left] : {std::tuple{SDL_KEYDOWN, app::Wake::Event, 1},
                                         std::tuple{SDL_MOUSEMOTION, app::Wake::Motion, 0}}) {
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    s_type = type;
    SDL_AddTimer(30, [](Uint32, void*) -> Uint32 { SDL_Event e{s_type}; return SDL_PushEvent(&e) * 0; }, nullptr);
    EXPECT_EQ(app::waitForEvent(3600), wake) << type;
    EXPECT_EQ(SDL_PeepEvents(nullptr, 0, SDL_PEEKEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT), left) << type;
  }
  EXPECT_EQ(app::waitForEvent(0.01), app::Wake::Timeout);
  SDL_Quit();
}

}  // namespace
