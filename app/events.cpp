#include "app/events.h"

namespace app {

namespace {

constexpr double kDoubleClickSeconds = 0.3;

void handleKey(const SDL_KeyboardEvent& key, ui::Input& in, store::Settings& settings, LoopState& loop) {
  const SDL_Keycode sym = key.keysym.sym;
  if (sym == SDLK_F11) {
    settings.fullscreen = !settings.fullscreen;
    loop.saveNow = true;
  } else if (sym == SDLK_q && (key.keysym.mod & KMOD_CTRL)) {
    loop.running = false;
  } else {
    in.keys.push_back(sym);
    // A quick Ctrl+N may be pressed and released within one frame, before
    // the modifiers are polled: the key's own modifiers count too.
    in.ctrl = in.ctrl || (key.keysym.mod & KMOD_CTRL) != 0;
    in.shift = in.shift || (key.keysym.mod & KMOD_SHIFT) != 0;
  }
}

void handleWindow(const SDL_WindowEvent& w, Uint32 windowFlags, store::Settings& settings, LoopState& loop) {
  // While fullscreen, minimised or maximised the window's geometry is not
  // the one to restore next time; only maximise/restore are recorded.
  const Uint32 special = SDL_WINDOW_FULLSCREEN | SDL_WINDOW_FULLSCREEN_DESKTOP | SDL_WINDOW_MINIMIZED |
                         SDL_WINDOW_MAXIMIZED;
  const bool frozen = settings.fullscreen || (windowFlags & special) != 0;
  switch (w.event) {
    case SDL_WINDOWEVENT_SIZE_CHANGED:
      if (frozen) return;
      settings.windowW = w.data1;
      settings.windowH = w.data2;
      break;
    case SDL_WINDOWEVENT_MOVED:
      if (frozen) return;
      settings.windowX = w.data1;
      settings.windowY = w.data2;
      break;
    case SDL_WINDOWEVENT_MAXIMIZED: settings.maximized = true; break;
    case SDL_WINDOWEVENT_RESTORED: settings.maximized = false; break;
    default: return;
  }
  loop.geometryChanged = true;
}

}  // namespace

void handleEvent(const SDL_Event& e, double now, Uint32 windowFlags, ui::Input& in, store::Settings& settings,
                 LoopState& loop) {
  switch (e.type) {
    case SDL_QUIT: loop.running = false; break;
    case SDL_KEYDOWN: handleKey(e.key, in, settings, loop); break;
    case SDL_MOUSEBUTTONDOWN:
      if (e.button.button == SDL_BUTTON_LEFT) in.mousePressed = true;
      if (e.button.button == SDL_BUTTON_RIGHT) in.rightPressed = true;
      break;
    case SDL_MOUSEBUTTONUP:
      if (e.button.button != SDL_BUTTON_LEFT) break;
      in.mouseReleased = true;
      if (now - loop.lastRelease < kDoubleClickSeconds) in.doubleClick = true;
      loop.lastRelease = now;
      break;
    case SDL_MOUSEWHEEL: in.wheel += e.wheel.preciseY; break;
    case SDL_WINDOWEVENT: handleWindow(e.window, windowFlags, settings, loop); break;
    case SDL_DROPFILE:
      if (e.drop.file) in.dropped.push_back(e.drop.file);
      SDL_free(e.drop.file);
      break;
    default: break;  // motion is polled once per frame instead
  }
}

}  // namespace app
