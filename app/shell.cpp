// One thread. Each pass of the loop sleeps until a frame is wanted
// (app/pacing.h: an event, a screen's request, the display's pace), gathers
// the input, draws one frame (ui/frame.h: the GPU draws straight to the
// renderer, the cairo overlay composited on top) and presents it; then it
// does what falls due whether or not a frame was drawn (a settings save, the
// statistics line, a termination signal).
#include "app/shell.h"

#include <SDL.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "app/cmdline.h"
#include "app/events.h"
#include "app/frame_stats.h"
#include "app/pacing.h"
#include "app/window_geometry.h"
#include "audio/audio.h"
#include "i18n/i18n.h"
#include "platform/app_info.h"
#include "platform/crash.h"
#include "platform/paths.h"
#include "store/store.h"
#include "ui/frame.h"
#include "ui/game.h"
#include "ui/gpu.h"
#include "ui/screens/own_pictures.h"
#include "ui/textures/board_image.h"
#include "ui/text.h"

namespace app {

namespace {

volatile sig_atomic_t g_terminate = 0;

// First signal: finish the frame and shut down normally (settings saved).
// Second signal: the player means it; leave at once, closing the sound device
// so it is not left open mid-buffer.
void onTerminationSignal(int sig) {
  if (g_terminate) {
    audio::shutdown();
    _Exit(128 + sig);
  }
  g_terminate = 1;
}

double nowSeconds() {
  static const auto origin = std::chrono::steady_clock::now();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - origin).count();
}

constexpr double kGeometrySaveInterval = 2.0;
// A signal cannot end SDL's event wait, so the wait is cut into slices this
// long to look for one.
constexpr double kSignalCheck = 0.25;
constexpr double kNever = ui::Ctx::kNoFrame;

struct Shell {
  store::Settings& settings = store::settings();
  bool sizeFromCommandLine = false;
  SDL_Window* window = nullptr;
  SDL_Renderer* renderer = nullptr;
  ui::FrameLayer layer;
  ui::Ctx ctx;
  LoopState loop;
  Pace pace;
  double prevFrameStart = 0;
  int prevMouseX = 0, prevMouseY = 0;  // window points
  int mouseX = 0, mouseY = 0;          // this pass's
  double units = 1;                    // window points per logical unit, this pass
  bool appliedFullscreen = false;
  double lastGeometrySave = 0;
  bool statsOn = false;
  FrameStats stats{0};
  int lastDrawCalls = 0, lastOutW = 0, lastOutH = 0;  // for the statistics line
};

constexpr int kMinWindowW = 800, kMinWindowH = 560;

// Window points per logical unit: the player's interface size, held down so
// the window never holds fewer logical units than the smallest window the
// game opens, and every screen keeps a layout it was made for.
double interfaceScale(SDL_Window* window, const store::Settings& settings) {
  int w = 0, h = 0;
  SDL_GetWindowSize(window, &w, &h);
  const double chosen = std::clamp(settings.interfaceScale / 100.0, 1.0, 2.0);
  return std::max(1.0, std::min({chosen, static_cast<double>(w) / kMinWindowW, static_cast<double>(h) / kMinWindowH}));
}

bool printInfoRequest(int argc, char** argv) {
  switch (findInfoRequest(argc, argv)) {
    case InfoRequest::Version: std::fputs(versionText().c_str(), stdout); return true;
    case InfoRequest::Help: std::fputs(helpText().c_str(), stdout); return true;
    case InfoRequest::None: return false;
  }
  return false;
}

// A second copy on the same data folder could empty the first one's files:
// it says so and ends, leaving the folder as it is. The settings file is only
// peeked at for the player's language.
void reportDataDirInUse() {
  std::fprintf(stderr, "[storage] %s wird schon von einem anderen laufenden Spiel benutzt \xE2\x80\x94 beendet\n",
               paths::dataDir().c_str());
  i18n::setLanguage(store::storedLanguage());
  // Without a display the line above is all there is.
  SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_INFORMATION, platform::kAppTitle, i18n::tr("app.alreadyRunning").c_str(),
                           nullptr);
}

void applyStartScreen(const store::Settings& settings) {
  const char* name = std::getenv("TESSELLATRIX_SCREEN");
  if (!name) return;
  ui::GameState state;
  if (startStateFor(name, settings, &state)) {
    ui::Game::instance().resetTo(state);
  } else {
    std::fputs(kScreenUsage, stderr);
  }
}

// The pictures folder's new files join the player's own pictures; pictures
// named on the command line do too, and the first of them opens as the puzzle.
void addPictures(int argc, char** argv) {
  ui::addPicturesFolder();
  const std::vector<std::string> ids = ui::addPictures(pictureArguments(argc, argv));
  if (!ids.empty()) ui::Game::instance().resetTo(ui::pictureGame(ids.front()));
}

bool createWindow(Shell& sh) {
  SDL_Rect area;
  const bool haveArea = displayArea(&area);
  const WindowPlacement p = placeWindow(sh.settings, sh.sizeFromCommandLine, haveArea ? &area : nullptr);
  sh.window = SDL_CreateWindow(platform::kAppTitle, p.x, p.y, p.w, p.h,
                               SDL_WINDOW_SHOWN | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI);
  if (!sh.window) {
    std::fprintf(stderr, "SDL_CreateWindow: %s\n", SDL_GetError());
    return false;
  }
  SDL_SetWindowMinimumSize(sh.window, kMinWindowW, kMinWindowH);
  if (sh.settings.fullscreen) {
    SDL_SetWindowFullscreen(sh.window, SDL_WINDOW_FULLSCREEN_DESKTOP);
  } else if (sh.settings.maximized) {
    SDL_MaximizeWindow(sh.window);
  }
  return true;
}

bool createRenderer(Shell& sh) {
  SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "linear");
  // The game only draws through SDL, so SDL may always queue its draws and
  // hand them over at present, also when a renderer is picked by name.
  SDL_SetHint(SDL_HINT_RENDER_BATCHING, "1");
  constexpr Uint32 kTries[] = {SDL_RENDERER_ACCELERATED | SDL_RENDERER_PRESENTVSYNC, SDL_RENDERER_ACCELERATED,
                               SDL_RENDERER_SOFTWARE};
  for (Uint32 flags : kTries) {
    sh.renderer = SDL_CreateRenderer(sh.window, -1, flags);
    if (sh.renderer) break;
  }
  if (!sh.renderer) {
    std::fprintf(stderr, "SDL_CreateRenderer: %s\n", SDL_GetError());
    return false;
  }
  SDL_RendererInfo info;
  if (SDL_GetRendererInfo(sh.renderer, &info) == 0) {
    std::printf("[video] Treiber %s, Renderer %s%s%s\n", SDL_GetCurrentVideoDriver(), info.name ? info.name : "?",
                (info.flags & SDL_RENDERER_ACCELERATED) ? " (beschleunigt)" : " (Software!)",
                (info.flags & SDL_RENDERER_PRESENTVSYNC) ? ", VSync an" : ", VSync AUS");
    std::fflush(stdout);
  }
  return true;
}

// The frame's input: the events since the last frame, then the pointer,
// buttons and modifiers as they are now.
void gatherInput(Shell& sh) {
  ui::Input& in = sh.ctx.in;
  in.reset();
  SDL_Event e;
  while (SDL_PollEvent(&e)) handleEvent(e, nowSeconds(), SDL_GetWindowFlags(sh.window), in, sh.settings, sh.loop);
  if (sh.loop.saveNow) {
    sh.loop.saveNow = false;
    store::saveSettings();
  }
  if (sh.settings.fullscreen != sh.appliedFullscreen) {
    SDL_SetWindowFullscreen(sh.window, sh.settings.fullscreen ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
    sh.appliedFullscreen = sh.settings.fullscreen;
  }
  int& mx = sh.mouseX;
  int& my = sh.mouseY;
  const Uint32 buttons = SDL_GetMouseState(&mx, &my);
  const double units = sh.units = interfaceScale(sh.window, sh.settings);
  in.mouseX = mx / units;
  in.mouseY = my / units;
  in.mouseDown = (buttons & SDL_BUTTON_LMASK) != 0;
  in.middleDown = (buttons & SDL_BUTTON_MMASK) != 0;
  in.dx = (mx - sh.prevMouseX) / units;
  in.dy = (my - sh.prevMouseY) / units;
  const SDL_Keymod mods = SDL_GetModState();
  in.ctrl = in.ctrl || (mods & KMOD_CTRL) != 0;
  in.shift = in.shift || (mods & KMOD_SHIFT) != 0;
  in.spaceDown = SDL_GetKeyboardState(nullptr)[SDL_SCANCODE_SPACE] != 0;
  const Uint32 flags = SDL_GetWindowFlags(sh.window);
  in.windowActive = (flags & SDL_WINDOW_INPUT_FOCUS) && !(flags & SDL_WINDOW_MINIMIZED);
}

bool windowHidden(const Shell& sh, int outW, int outH) {
  return (SDL_GetWindowFlags(sh.window) & (SDL_WINDOW_MINIMIZED | SDL_WINDOW_HIDDEN)) || outW <= 0 || outH <= 0;
}

// When something other than a frame falls due: a held-back settings save,
// the statistics line.
double choresDue(const Shell& sh) {
  const double save = sh.loop.geometryChanged ? sh.lastGeometrySave + kGeometrySaveInterval + 0.001 : kNever;
  return std::min(save, sh.statsOn ? sh.stats.due() : kNever);
}

// Sleeps until a frame is wanted: true to draw it, false when the loop woke
// for something else (a chore, a signal).
bool waitForFrame(Shell& sh) {
  for (;;) {
    if (g_terminate) return false;
    int outW = 0, outH = 0;
    SDL_GetRendererOutputSize(sh.renderer, &outW, &outH);
    sh.pace.hidden = windowHidden(sh, outW, outH);
    sh.pace.interval = displayInterval(sh.window);
    const double frameAt = nextFrameTime(sh.pace);
    const double now = nowSeconds();
    if (now >= frameAt) return true;
    const double until = std::min({frameAt, choresDue(sh), now + kSignalCheck});
    switch (waitForEvent(until - now)) {
      case Wake::Event: return true;
      case Wake::Motion: sh.pace.motion = true; break;
      case Wake::Timeout:
        if (until < frameAt) return false;
        break;
    }
  }
}

// One displayed frame; nothing is drawn while the window has no area
// (minimised), but the pointer is followed so no jump is seen on return.
// False when nothing was drawn.
bool runFrame(Shell& sh) {
  int outW = 0, outH = 0;
  SDL_GetRendererOutputSize(sh.renderer, &outW, &outH);
  if (outW <= 0 || outH <= 0) {
    sh.prevMouseX = sh.mouseX;
    sh.prevMouseY = sh.mouseY;
    return false;
  }
  int winW = 0, winH = 0;
  SDL_GetWindowSize(sh.window, &winW, &winH);
  // Pixels per logical unit: the display's density times the interface size.
  const double density = (outW > 0 && winW > 0) ? static_cast<double>(outW) / winW : 1.0;
  const double scale = density * sh.units;

  ui::Ctx& ctx = sh.ctx;
  const double time = nowSeconds();
  ctx.time = time;
  // After a rest nothing was moving: the time slept is no animation's step.
  ctx.dt = std::min(time - sh.prevFrameStart, sh.pace.animating ? 0.1 : sh.pace.interval);
  ui::drawFrame(sh.renderer, sh.layer, ctx, outW, outH, scale);
  const double cpuEnd = nowSeconds();
  SDL_RenderPresent(sh.renderer);
  if (sh.statsOn) sh.stats.count(cpuEnd - time, nowSeconds() - cpuEnd);
  sh.lastDrawCalls = ui::gpuDrawCalls();
  sh.lastOutW = outW;
  sh.lastOutH = outH;
  sh.prevFrameStart = time;
  sh.prevMouseX = sh.mouseX;
  sh.prevMouseY = sh.mouseY;
  return true;
}

// What the frame asked of the next one. A pass that drew nothing leaves no
// request behind, so a window without area waits for its next event.
void notePace(Shell& sh, bool drawn) {
  Pace& pace = sh.pace;
  pace.motion = false;
  pace.lastFrame = drawn ? sh.prevFrameStart : nowSeconds();
  pace.animating = drawn && sh.ctx.animating;
  pace.frameAt = drawn ? sh.ctx.nextFrameAt : kNever;
}

void doChores(Shell& sh) {
  const double now = nowSeconds();
  if (sh.statsOn) {
    const std::string line = sh.stats.report(now, sh.lastDrawCalls, sh.lastOutW, sh.lastOutH);
    if (!line.empty()) std::fputs(line.c_str(), stderr);
  }
  // The first change is saved at once, later ones at most every two seconds.
  if (sh.loop.geometryChanged && now - sh.lastGeometrySave > kGeometrySaveInterval) {
    store::saveSettings();
    sh.loop.geometryChanged = false;
    sh.lastGeometrySave = now;
  }
  if (sh.ctx.quit || g_terminate) sh.loop.running = false;
}

void shutdown(Shell& sh) {
  ui::Game::instance().saveNow();
  store::saveSettings();
  ui::imagesShutdown();
  ui::gpuShutdown();
  audio::shutdown();
  sh.layer.release();
  SDL_DestroyRenderer(sh.renderer);
  SDL_DestroyWindow(sh.window);
  SDL_Quit();
}

}  // namespace

int run(int argc, char** argv) {
  if (printInfoRequest(argc, argv)) return 0;
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  std::signal(SIGTERM, onTerminationSignal);
  std::signal(SIGINT, onTerminationSignal);
  std::signal(SIGHUP, onTerminationSignal);
  platform::installCrashHandler();
  paths::prepareFontconfig();

  if (!store::claimDataDir()) {
    reportDataDirInUse();
    return 0;
  }
  store::init();
  Shell sh;  // its settings are the store's record
  sh.sizeFromCommandLine = applyWindowOptions(argc, argv, sh.settings);
  i18n::setLanguage(sh.settings.language);
  applyStartScreen(sh.settings);
  addPictures(argc, argv);

  // SDL falls back to its invisible offscreen driver when no display is
  // reachable; a window nobody can see is worse than a clear message, so the
  // invisible drivers are only used when SDL_VIDEODRIVER asks for them.
  SDL_SetHint(SDL_HINT_VIDEODRIVER, "x11,wayland,kmsdrm");
  if (SDL_Init(SDL_INIT_TIMER | SDL_INIT_VIDEO) != 0) {
    std::fprintf(stderr, "SDL_Init: %s\n", SDL_GetError());
    return 1;
  }
  if (!createWindow(sh) || !createRenderer(sh)) return 1;
  ui::gpuInit(sh.renderer);
  ui::registerBundledFonts();
  audio::init();
  audio::setEnabled(sh.settings.soundOn);
  audio::setMusicVolume(sh.settings.musicVolume);
  audio::setSfxVolume(sh.settings.sfxVolume);
  if (sh.settings.soundOn) audio::startMusic();

  sh.prevFrameStart = nowSeconds();
  sh.pace.lastFrame = sh.prevFrameStart - 1;  // the first frame at once
  sh.appliedFullscreen = sh.settings.fullscreen;
  sh.statsOn = std::getenv("TESSELLATRIX_STATS") != nullptr;
  sh.stats = FrameStats(nowSeconds());
  SDL_GetMouseState(&sh.prevMouseX, &sh.prevMouseY);

  while (sh.loop.running) {
    if (waitForFrame(sh)) {
      gatherInput(sh);
      notePace(sh, runFrame(sh));
    }
    doChores(sh);
  }
  shutdown(sh);
  return 0;
}

}  // namespace app
