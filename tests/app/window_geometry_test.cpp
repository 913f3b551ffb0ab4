#include "app/window_geometry.h"

#include <gtest/gtest.h>

namespace {

const SDL_Rect kArea{0, 0, 1920, 1040};

store::Settings stored(int x, int y, int w = 1280, int h = 800) {
  store::Settings s;
  s.windowX = x;
  s.windowY = y;
  s.windowW = w;
  s.windowH = h;
  return s;
}

TEST(WindowGeometry, CommandLineSizeIsExactAndCentred) {
  const app::WindowPlacement p = app::placeWindow(stored(100, 100, 3000, 2000), true, &kArea);
  EXPECT_EQ(p.w, 3000);
  EXPECT_EQ(p.h, 2000);
  EXPECT_EQ(p.x, SDL_WINDOWPOS_CENTERED);
  EXPECT_EQ(p.y, SDL_WINDOWPOS_CENTERED);
}

TEST(WindowGeometry, StoredSizeIsClampedToTheUsableArea) {
  const app::WindowPlacement p = app::placeWindow(stored(-1, -1, 3000, 2000), false, &kArea);
  EXPECT_EQ(p.w, 1900);
  EXPECT_EQ(p.h, 960);
}

TEST(WindowGeometry, XOfMinusOneCentresButYOfMinusOneDoesNot) {
  app::WindowPlacement p = app::placeWindow(stored(-1, 200), false, &kArea);
  EXPECT_EQ(p.x, SDL_WINDOWPOS_CENTERED);
  EXPECT_EQ(p.y, SDL_WINDOWPOS_CENTERED);
  p = app::placeWindow(stored(200, -1), false, &kArea);
  EXPECT_EQ(p.x, 200);
  EXPECT_EQ(p.y, 30) << "a real position above the top margin is pushed down";
}

TEST(WindowGeometry, FarOffPositionsCentre) {
  EXPECT_EQ(app::placeWindow(stored(-10000, 50), false, &kArea).x, SDL_WINDOWPOS_CENTERED);
  EXPECT_EQ(app::placeWindow(stored(50, -10000), false, &kArea).x, SDL_WINDOWPOS_CENTERED);
  EXPECT_EQ(app::placeWindow(stored(-9999, 50), false, &kArea).x, 0) << "-9999 is a position, clamped";
}

TEST(WindowGeometry, PositionsAreKeptInsideTheArea) {
  const SDL_Rect second{1920, 24, 1280, 1000};  // a second monitor with a top panel
  app::WindowPlacement p = app::placeWindow(stored(1900, 40, 800, 600), false, &second);
  EXPECT_EQ(p.x, 1920);
  EXPECT_EQ(p.y, 54) << "top + 30";
  p = app::placeWindow(stored(3000, 900, 800, 600), false, &second);
  EXPECT_EQ(p.x, 1920 + 1280 - 800);
  EXPECT_EQ(p.y, 24 + 1000 - 600);
  p = app::placeWindow(stored(2000, 100, 800, 600), false, &second);
  EXPECT_EQ(p.x, 2000);
  EXPECT_EQ(p.y, 100);
}

TEST(WindowGeometry, WithoutAnAreaTheStoredGeometryIsUsedUnchanged) {
  const app::WindowPlacement p = app::placeWindow(stored(-500, -20, 5000, 4000), false, nullptr);
  EXPECT_EQ(p.x, -500);
  EXPECT_EQ(p.y, -20);
  EXPECT_EQ(p.w, 5000);
  const SDL_Rect empty{0, 0, 0, 1080};
  EXPECT_EQ(app::placeWindow(stored(-500, -20, 5000, 4000), false, &empty).w, 5000) << "an empty area is no area";
}

}  // namespace
