#include "render/PictureBatch.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <system_error>
#include <thread>
#include <utility>

#include <QThread>

#include "base/Words.h"
#include "render/Composition.h"
#include "render/PictureFile.h"

namespace quillmark {
namespace {

/// Enough to keep every core busy, few enough that an interruption is not waited for.
constexpr std::size_t MaxHeld = 64;
constexpr std::int64_t MaxHeldPixels = std::int64_t{16} * FrameWidth * FrameHeight576;

}  // namespace

void ExportFailures::Add(const QString& path, const std::string& reason) {
  if (Count++ == 0) {
    FirstPath = path;
    FirstReason = reason;
  }
}

QString ExportFailures::Text() const {
  if (Count == 0) {
    return {};
  }
  const QString first = FirstPath + QStringLiteral(": ") + QString::fromStdString(FirstReason);
  return Count == 1
             ? first
             : first + QStringLiteral("\r\n") +
                   QString::fromStdString(Words::Tr("%1 pictures could not be written; this is the first one",
                                                    {std::to_string(Count)}));
}

void PictureBatch::Add(const QString& path, cBitmap picture) {
  ++count_;
  heldPixels_ += std::int64_t{picture.Width()} * picture.Height();
  const auto same = std::ranges::find(held_, path, &HeldPicture::Path);
  if (same != held_.end()) {
    same->Picture = std::move(picture);
  } else {
    held_.push_back({.Path = path, .Picture = std::move(picture)});
  }
  if (held_.size() >= MaxHeld || heldPixels_ >= MaxHeldPixels) {
    Flush();
  }
}

/// Nearly all of an export's time goes into packing the pictures, which is why the cores share them.
void PictureBatch::Flush() {
  std::atomic<std::size_t> next = 0;
  const auto write = [&] {
    for (std::size_t i = next++; i < held_.size(); i = next++) {
      held_[i].Saved = WritePicture(held_[i].Path, held_[i].Picture, Durability::Unsynced);
    }
  };
  // Without an application, Qt takes the thread that first uses it for the main one, whose data the image
  // plugins use until the program ends. That of a helper would be gone by then.
  static_cast<void>(QThread::currentThread());
  {
    std::vector<std::jthread> helpers;
    try {
      while (helpers.size() + 1 < std::min<std::size_t>(std::thread::hardware_concurrency(), held_.size())) {
        helpers.emplace_back(write);
      }
    } catch (const std::system_error&) {
      // No more threads to be had; this one does what they would have done.
    }
    write();
  }
  for (const HeldPicture& held : held_) {
    if (!held.Saved) {
      failures_.Add(held.Path, held.Saved.Reason());
    }
  }
  held_.clear();
  heldPixels_ = 0;
}

}  // namespace quillmark
