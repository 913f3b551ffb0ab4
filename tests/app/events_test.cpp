#include "app/events.h"

#include <gtest/gtest.h>

namespace {

class Events : public ::testing::Test {
 protected:
  void send(const SDL_Event& e, double now = 1.0, Uint32 flags = 0) {
    app::handleEvent(e, now, flags, in, settings, loop);
  }
  static SDL_Event key(SDL_Keycode sym, Uint16 mod = KMOD_NONE) {
    SDL_Event e{};
    e.type = SDL_KEYDOWN;
    e.key.keysym.sym = sym;
    e.key.keysym.mod = mod;
    return e;
  }
  static SDL_Event button(Uint32 type, Uint8 which) {
    SDL_Event e{};
    e.type = type;
    e.button.button = which;
    return e;
  }
  static SDL_Event window(Uint8 event, int a = 0, int b = 0) {
    SDL_Event e{};
    e.type = SDL_WINDOWEVENT;
    e.window.event = event;
    e.window.data1 = a;
    e.window.data2 = b;
    return e;
  }

  ui::Input in;
  store::Settings settings;
  app::LoopState loop;
};

TEST_F(Events, F11TogglesFullscreenAndNeverReachesScreens) {
  send(key(SDLK_F11));
  EXPECT_TRUE(settings.fullscreen);
  EXPECT_TRUE(loop.saveNow);
  send(key(SDLK_F11, KMOD_LCTRL));
  EXPECT_FALSE(settings.fullscreen);
  EXPECT_TRUE(in.keys.empty());
}

TEST_F(Events, CtrlQQuitsButQAloneIsAKey) {
  send(key(SDLK_q));
  EXPECT_TRUE(loop.running);
  ASSERT_EQ(in.keys.size(), 1u);
  EXPECT_EQ(in.keys[0], SDLK_q);
  send(key(SDLK_q, KMOD_RCTRL));
  EXPECT_FALSE(loop.running);
  EXPECT_EQ(in.keys.size(), 1u);
}

TEST_F(Events, KeysKeepArrivalOrderAndRepeats) {
  send(key(SDLK_z, KMOD_LCTRL));
  send(key(SDLK_PLUS));
  send(key(SDLK_PLUS));
  const std::vector<int32_t> expected = {SDLK_z, SDLK_PLUS, SDLK_PLUS};
  EXPECT_EQ(in.keys, expected);
}

TEST_F(Events, ReleasesUnderAThirdOfASecondApartAreADoubleClick) {
  const auto release = [this](double now) {
    in.reset();
    send(button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT), now);
    return in.doubleClick;
  };
  EXPECT_FALSE(release(1.0));
  EXPECT_TRUE(in.mouseReleased);
  EXPECT_FALSE(release(1.3)) << "0.3 s after the previous release";
  EXPECT_TRUE(release(1.59)) << "0.29 s after the previous release";
  EXPECT_TRUE(release(1.6)) << "every release counts as the previous one";
}

TEST_F(Events, TheFirstReleaseAfterStartIsNoDoubleClick) {
  send(button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT), 0.05);
  EXPECT_FALSE(in.doubleClick);
}

TEST_F(Events, ButtonsAndWheel) {
  send(button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT));
  send(button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT));
  send(button(SDL_MOUSEBUTTONUP, SDL_BUTTON_RIGHT));
  EXPECT_TRUE(in.mousePressed);
  EXPECT_TRUE(in.rightPressed);
  EXPECT_FALSE(in.mouseReleased) << "only the left button clicks";
  SDL_Event wheel{};
  wheel.type = SDL_MOUSEWHEEL;
  wheel.wheel.preciseY = 1.0f;
  send(wheel);
  wheel.wheel.preciseY = 0.5f;
  send(wheel);
  EXPECT_DOUBLE_EQ(in.wheel, 1.5);
  SDL_Event quit{};
  quit.type = SDL_QUIT;
  send(quit);
  EXPECT_FALSE(loop.running);
}

TEST_F(Events, MovesAndResizesAreStoredForANormalWindow) {
  send(window(SDL_WINDOWEVENT_SIZE_CHANGED, 1024, 700));
  send(window(SDL_WINDOWEVENT_MOVED, 40, 60));
  EXPECT_EQ(settings.windowW, 1024);
  EXPECT_EQ(settings.windowH, 700);
  EXPECT_EQ(settings.windowX, 40);
  EXPECT_EQ(settings.windowY, 60);
  EXPECT_TRUE(loop.geometryChanged);
}

TEST_F(Events, MaximisedOrFullscreenGeometryIsNotStored) {
  for (Uint32 flags : {Uint32(SDL_WINDOW_MAXIMIZED), Uint32(SDL_WINDOW_FULLSCREEN_DESKTOP),
                       Uint32(SDL_WINDOW_FULLSCREEN), Uint32(SDL_WINDOW_MINIMIZED)}) {
    send(window(SDL_WINDOWEVENT_SIZE_CHANGED, 1920, 1080), 1.0, flags);
    send(window(SDL_WINDOWEVENT_MOVED, 0, 0), 1.0, flags);
  }
  settings.fullscreen = true;
  send(window(SDL_WINDOWEVENT_SIZE_CHANGED, 1920, 1080));
  EXPECT_EQ(settings.windowW, 1280);
  EXPECT_EQ(settings.windowX, -1);
  EXPECT_FALSE(loop.geometryChanged);
}

TEST_F(Events, MaximiseAndRestoreAreRecordedEvenInFullscreen) {
  settings.fullscreen = true;
  send(window(SDL_WINDOWEVENT_MAXIMIZED), 1.0, SDL_WINDOW_MAXIMIZED);
  EXPECT_TRUE(settings.maximized);
  EXPECT_TRUE(loop.geometryChanged);
  send(window(SDL_WINDOWEVENT_RESTORED));
  EXPECT_FALSE(settings.maximized);
}

TEST_F(Events, OtherWindowEventsChangeNothing) {
  send(window(SDL_WINDOWEVENT_FOCUS_LOST));
  send(window(SDL_WINDOWEVENT_EXPOSED));
  EXPECT_FALSE(loop.geometryChanged);
}

}  // namespace
