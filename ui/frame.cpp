#include "ui/frame.h"

#include "store/store.h"
#include "ui/game.h"
#include "ui/gpu.h"
#include "ui/widgets/notice.h"
#include "ui/widgets/theme.h"

namespace ui {

uint32_t backgroundRgb() {
  const store::OptColor& bg = store::settings().bgColor;
  return bg.set ? bg.rgb : kColorBackground;
}

void drawFrame(SDL_Renderer* renderer, FrameLayer& layer, Ctx& ctx, int outW, int outH, double scale) {
  layer.ensure(renderer, outW, outH);
  ctx.cr = layer.begin(scale);
  ctx.width = outW / scale;
  ctx.height = outH / scale;
  ctx.clickTaken = false;
  ctx.reducedMotion = store::settings().reducedMotion;

  gpuSetScale(scale);
  gpuBeginFrame();
  const uint32_t rgb = backgroundRgb();
  SDL_SetRenderDrawColor(renderer, (rgb >> 16) & 255, (rgb >> 8) & 255, rgb & 255, 255);
  SDL_RenderClear(renderer);
  {
    // A notice is modal like a dialog, and a puzzle beneath it pauses as it
    // does when the window loses the focus: its clock must not run unseen.
    const bool notice = noticePending();
    InputShield beneath(ctx, notice);
    if (notice) ctx.in.windowActive = false;
    Game::instance().update(ctx);
  }
  noticeLayer(ctx);

  layer.finishDrawing();
  ctx.cr = nullptr;
  layer.composite(renderer);
}

}  // namespace ui
