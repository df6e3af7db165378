#include "imaging/cGraphics.h"

#include <algorithm>
#include <cstddef>
#include <gmock/gmock.h>
#include <vector>

#include <climits>
#include <gtest/gtest.h>

#include "tests/imaging/ErrorLog.h"

namespace quillmark {
namespace {

using testing::Each;
using testing::ElementsAre;

cBitmap BitmapOf(int width, int height, const std::vector<std::uint32_t>& pixels) {
  cBitmap bitmap;
  bitmap.Create(width, height);
  std::copy(pixels.begin(), pixels.end(), bitmap.LockPixels().begin());
  return bitmap;
}

QImage Surface(int width, int height, QImage::Format format, std::uint32_t pixel) {
  QImage surface(width, height, format);
  surface.fill(pixel);
  return surface;
}

std::vector<std::uint32_t> Pixels(const QImage& image) {
  const auto* const first = reinterpret_cast<const std::uint32_t*>(image.constBits());
  return {first, first + static_cast<std::ptrdiff_t>(image.width()) * image.height()};
}

TEST(Clear, FillsTheSurface) {
  QImage surface = Surface(2, 2, QImage::Format_ARGB32, 0xFF112233);
  cGraphics(surface).Clear(0x00000000);
  EXPECT_THAT(Pixels(surface), Each(0U));
}

TEST(Clear, AnOpaqueSurfaceStaysOpaque) {
  QImage surface = Surface(2, 1, QImage::Format_RGB32, 0xFF112233);
  cGraphics(surface).Clear(0x00445566);
  EXPECT_THAT(Pixels(surface), Each(0xFF445566U));
}

TEST(FillRectangle, PaintsTheAreaAlone) {
  QImage surface = Surface(3, 2, QImage::Format_RGB32, 0xFF000000);
  cGraphics(surface).FillRectangle(QRect(1, 0, 1, 2), 0xFF3C3C3C);
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFF000000, 0xFF3C3C3C, 0xFF000000,  //
                                           0xFF000000, 0xFF3C3C3C, 0xFF000000));
}

TEST(FillRectangle, WhatLiesOutsideTheSurfaceIsCutOff) {
  QImage surface = Surface(2, 2, QImage::Format_RGB32, 0xFF000000);
  cGraphics graphics(surface);
  graphics.FillRectangle(QRect(1, 1, 16, 16), 0xFF787878);
  graphics.FillRectangle(QRect(-16, -16, 17, 17), 0xFF3C3C3C);
  graphics.FillRectangle(QRect(2, 0, 16, 16), 0xFFFFFFFF);
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFF3C3C3C, 0xFF000000, 0xFF000000, 0xFF787878));
}

TEST(FillRectangle, BesideTheSurfaceItPaintsNothing) {
  QImage surface = Surface(2, 2, QImage::Format_RGB32, 0xFF000000);
  cGraphics graphics(surface);
  for (const QRect& area : {QRect(3, 0, 2, 2), QRect(-3, 0, 2, 2), QRect(0, 3, 2, 2), QRect(0, -3, 2, 2)}) {
    graphics.FillRectangle(area, 0xFFFFFFFF);
    EXPECT_EQ(graphics.LastStatus(), 0);
  }
  EXPECT_THAT(Pixels(surface), Each(0xFF000000U));
}

TEST(FillRectangle, TranslucentColourIsBlended) {
  QImage surface = Surface(1, 1, QImage::Format_RGB32, 0xFF3C3C3C);
  cGraphics(surface).FillRectangle(QRect(0, 0, 1, 1), 0x88FFFFFF);
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFFA4A4A4));
}

TEST(FillRectangle, FollowsTheTranslation) {
  QImage surface = Surface(2, 1, QImage::Format_RGB32, 0xFF000000);
  cGraphics graphics(surface);
  graphics.TranslateTransform(1, 0);
  graphics.FillRectangle(QRect(0, 0, 1, 1), 0xFF3C3C3C);
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFF000000, 0xFF3C3C3C));
}

TEST(DrawImage, FollowsTheTranslation) {
  QImage surface = Surface(2, 2, QImage::Format_RGB32, 0xFF000000);
  cGraphics graphics(surface);
  graphics.TranslateTransform(1, 1);
  graphics.DrawImage(BitmapOf(1, 1, {0xFF336699}), 0, 0);
  graphics.DrawImage(BitmapOf(1, 1, {0xFF998877}), -1, 0);
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFF000000, 0xFF000000, 0xFF998877, 0xFF336699));
}

TEST(DrawImage, BlendsOverAnOpaqueSurface) {
  QImage surface = Surface(4, 1, QImage::Format_RGB32, 0xFF3C3C3C);
  cGraphics(surface).DrawImage(BitmapOf(4, 1, {0xFF010203, 0x88FFFFFF, 0x00FFFFFF, 0x11C86400}), 0, 0);
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFF010203, 0xFFA4A4A4, 0xFF3C3C3C, 0xFF453F38));
}

TEST(DrawImage, UnusedByteOfAnOpaqueSurfaceCountsAsFullAlpha) {
  QImage surface = Surface(1, 1, QImage::Format_RGB32, 0xFF3C3C3C);
  *reinterpret_cast<std::uint32_t*>(surface.bits()) = 0x003C3C3C;
  cGraphics(surface).DrawImage(BitmapOf(1, 1, {0x88FFFFFF}), 0, 0);
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFFA4A4A4));
}

TEST(DrawImage, OverFullTransparencyEveryValueSurvivesToTheBit) {
  QImage surface = Surface(4, 1, QImage::Format_ARGB32, 0);
  cGraphics(surface).DrawImage(BitmapOf(4, 1, {0xFF010203, 0x88EB8001, 0x11FFFE01, 0x01030201}), 0, 0);
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFF010203, 0x88EB8001, 0x11FFFE01, 0x01030201));
}

TEST(DrawImage, TransparentPixelsLeaveWhatIsBelow) {
  QImage surface = Surface(3, 1, QImage::Format_ARGB32, 0x40112233);
  cGraphics(surface).DrawImage(BitmapOf(3, 1, {0x00000000, 0x00FFFFFF, 0x00112233}), 0, 0);
  EXPECT_THAT(Pixels(surface), Each(0x40112233U));
}

TEST(DrawImage, TranslucentOverTranslucentKeepsStraightAlpha) {
  QImage surface = Surface(1, 1, QImage::Format_ARGB32, 0x400000FF);
  cGraphics(surface).DrawImage(BitmapOf(1, 1, {0x80FF0000}), 0, 0);
  EXPECT_THAT(Pixels(surface), ElementsAre(0xA0CC0033));
}

TEST(DrawImage, IsClippedAtEachEdge) {
  const cBitmap image = BitmapOf(2, 2,
                                 {0xFF000001, 0xFF000002,  //
                                  0xFF000003, 0xFF000004});
  QImage surface = Surface(3, 3, QImage::Format_ARGB32, 0);
  cGraphics graphics(surface);
  graphics.DrawImage(image, -1, -1);
  graphics.DrawImage(image, 2, -1);
  graphics.DrawImage(image, -1, 2);
  graphics.DrawImage(image, 2, 2);
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFF000004, 0, 0xFF000003,  //
                                           0, 0, 0,                    //
                                           0xFF000002, 0, 0xFF000001));
}

TEST(DrawImage, ExtremePlacesDrawNothing) {
  const cBitmap image = BitmapOf(2, 1, {0xFFFFFFFF, 0xFFFFFFFF});
  QImage surface = Surface(2, 2, QImage::Format_ARGB32, 0);
  cGraphics graphics(surface);
  for (const int move : {0, INT_MIN, INT_MAX}) {
    graphics.TranslateTransform(move, move);
    for (const int place : {INT_MIN, INT_MAX}) {
      graphics.DrawImage(image, place, 0);
      graphics.DrawImage(image, 0, place);
      graphics.FillRectangle(QRect(0, 0, 1, 1).translated(0, place / 2 - 1), 0xFFFFFFFF);
    }
  }
  EXPECT_EQ(graphics.LastStatus(), 0);
  EXPECT_THAT(Pixels(surface), Each(0U));
}

TEST(DrawImage, IsMovedByTheSumOfTranslationsUntilTheyAreReset) {
  const cBitmap image = BitmapOf(1, 1, {0xFFFFFFFF});
  QImage surface = Surface(1, 4, QImage::Format_ARGB32, 0);
  cGraphics graphics(surface);
  graphics.TranslateTransform(0, 5);
  graphics.TranslateTransform(0, -2);
  graphics.DrawImage(image, 0, 0);
  graphics.ResetTransform();
  graphics.DrawImage(image, 0, 1);
  EXPECT_THAT(Pixels(surface), ElementsAre(0, 0xFFFFFFFF, 0, 0xFFFFFFFF));
}

TEST(DrawImage, ACopyOfTheSurfaceKeepsItsPixels) {
  QImage surface = Surface(1, 1, QImage::Format_ARGB32, 0xFF111111);
  const QImage copy = surface;
  cGraphics(surface).DrawImage(BitmapOf(1, 1, {0xFFFFFFFF}), 0, 0);
  EXPECT_THAT(Pixels(copy), ElementsAre(0xFF111111));
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFFFFFFFF));
}

TEST(DrawImageRectRect, StretchesTheSourceOverTheWholeDestination) {
  QImage surface = Surface(6, 4, QImage::Format_RGB32, 0xFF000000);
  cGraphics(surface).DrawImageRectRect(BitmapOf(1, 1, {0xFF336699}), QRect(0, 0, 6, 4), QRect(0, 0, 1, 1));
  EXPECT_THAT(Pixels(surface), Each(0xFF336699U));
}

TEST(DrawImageRectRect, TakesTheSourceRectangleAlone) {
  QImage surface = Surface(3, 1, QImage::Format_RGB32, 0xFF000000);
  const cBitmap image = BitmapOf(3, 1, {0xFF0000FF, 0xFF00FF00, 0xFFFF0000});
  cGraphics(surface).DrawImageRectRect(image, QRect(1, 0, 1, 1), QRect(2, 0, 1, 1));
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFF000000, 0xFFFF0000, 0xFF000000));
}

TEST(DrawImageRectRect, FollowsTheTranslation) {
  QImage surface = Surface(2, 2, QImage::Format_RGB32, 0xFF000000);
  cGraphics graphics(surface);
  graphics.TranslateTransform(1, 1);
  graphics.DrawImageRectRect(BitmapOf(1, 1, {0xFF336699}), QRect(0, 0, 1, 1), QRect(0, 0, 1, 1));
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFF000000, 0xFF000000, 0xFF000000, 0xFF336699));
}

TEST(DrawImageRectRect, BetweenStretchedPixelsAreTheirMixtures) {
  QImage surface = Surface(4, 1, QImage::Format_RGB32, 0xFF0000FF);
  const cBitmap image = BitmapOf(2, 1, {0xFF000000, 0xFFFFFFFF});
  cGraphics(surface).DrawImageRectRect(image, QRect(0, 0, 4, 1), QRect(0, 0, 2, 1));
  const int second = qGreen(surface.pixel(1, 0));
  const int third = qGreen(surface.pixel(2, 0));
  EXPECT_GT(second, 0);
  EXPECT_LT(second, third);
  EXPECT_LT(third, 255);
}

TEST(DrawImageRectRect, EmptyRectanglesDrawNothing) {
  QImage surface = Surface(1, 1, QImage::Format_RGB32, 0xFF000000);
  const cBitmap image = BitmapOf(1, 1, {0xFFFFFFFF});
  cGraphics graphics(surface);
  graphics.DrawImageRectRect(image, QRect(0, 0, 0, 1), QRect(0, 0, 1, 1));
  graphics.DrawImageRectRect(image, QRect(0, 0, 1, 1), QRect(0, 0, 1, 0));
  EXPECT_EQ(graphics.LastStatus(), 0);
  EXPECT_THAT(Pixels(surface), ElementsAre(0xFF000000));
}

TEST(SurfaceStatus, DrawingNoImageIsReportedUnderTheFontName) {
  const ErrorLog log;
  QImage surface = Surface(1, 1, QImage::Format_RGB32, 0xFF000000);
  cGraphics graphics(surface, &log.Instance);
  graphics.DrawImage(cBitmap(), 0, 0);
  EXPECT_EQ(graphics.LastStatus(), 2);
  EXPECT_THAT(log.Errors, ElementsAre(ReportedError{"cFont", 2, "Invalid Parameter"}));
}

TEST(SurfaceStatus, ASuccessClearsTheLastFailure) {
  QImage surface = Surface(1, 1, QImage::Format_RGB32, 0xFF000000);
  cGraphics graphics(surface);
  graphics.DrawImageRectRect(cBitmap(), QRect(0, 0, 1, 1), QRect(0, 0, 1, 1));
  EXPECT_EQ(graphics.LastStatus(), 2);
  graphics.Clear(0xFF000000);
  EXPECT_EQ(graphics.LastStatus(), 0);
  graphics.DrawImage(cBitmap(), 0, 0);
  EXPECT_EQ(graphics.LastStatus(), 2);
  graphics.DrawImageRectRect(BitmapOf(1, 1, {0xFFFFFFFF}), QRect(0, 0, 1, 1), QRect(0, 0, 1, 1));
  EXPECT_EQ(graphics.LastStatus(), 0);
  graphics.DrawImage(cBitmap(), 0, 0);
  graphics.DrawImage(BitmapOf(1, 1, {0xFFFFFFFF}), 0, 0);
  EXPECT_EQ(graphics.LastStatus(), 0);
  graphics.DrawImage(cBitmap(), 0, 0);
  graphics.FillRectangle(QRect(0, 0, 1, 1), 0xFF000000);
  EXPECT_EQ(graphics.LastStatus(), 0);
}

TEST(SurfaceStatus, EveryOperationOnAMissingSurfaceFails) {
  const ErrorLog log;
  QImage none;
  cGraphics graphics(none, &log.Instance);
  const cBitmap image = BitmapOf(1, 1, {0xFFFFFFFF});
  graphics.Clear(0);
  EXPECT_EQ(graphics.LastStatus(), 2);
  graphics.FillRectangle(QRect(0, 0, 1, 1), 0);
  EXPECT_EQ(graphics.LastStatus(), 2);
  graphics.DrawImage(image, 0, 0);
  graphics.DrawImageRectRect(image, QRect(0, 0, 1, 1), QRect(0, 0, 1, 1));
  EXPECT_THAT(log.Errors,
              testing::AllOf(testing::SizeIs(4), Each(ReportedError{"cFont", 2, "Invalid Parameter"})));
}

TEST(SurfaceStatus, APremultipliedSurfaceIsRefused) {
  QImage surface = Surface(1, 1, QImage::Format_ARGB32_Premultiplied, 0);
  cGraphics graphics(surface);
  graphics.DrawImage(BitmapOf(1, 1, {0x80FFFFFF}), 0, 0);
  EXPECT_EQ(graphics.LastStatus(), 2);
}

}  // namespace
}  // namespace quillmark
