#include "render/Exporter.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <span>
#include <system_error>
#include <thread>
#include <utility>

#include "files/ReplaceFile.h"
#include "render/Composition.h"
#include "render/PictureFile.h"
#include "render/SubtitleExport.h"

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
  return Count == 1 ? first
                    : first + QStringLiteral("\r\n") + QString::number(Count) +
                          QStringLiteral(" pictures could not be written; this is the first one");
}

void Exporter::Add(const SubtitleDescription& description, cBitmap picture) {
  const SubtitleExport names = DescribeExport(description, paths_);
  AddLine(names.ListLine);
  // Where the folder is missing all the same, the picture has a reason not to be written.
  static_cast<void>(MakeFolder(paths_.Folder));
  if (picture.Width() < 1) {
    pictureFailures_.Add(names.PicturePath, NoPixelsText);
    return;
  }
  Hold(names.PicturePath, std::move(picture));
  if (held_.size() >= MaxHeld || heldPixels_ >= MaxHeldPixels) {
    Flush();
  }
}

void Exporter::AddLine(const QString& line) {
  if (list_ == List::Replaced) {
    lines_ += line.toStdString();
  } else if (const auto appended = AppendSpuLine(paths_.List, line); !appended) {
    listFailures_.Add(paths_.List, appended.Reason());
  }
}

void Exporter::Hold(const QString& path, cBitmap picture) {
  ++pictures_;
  heldPixels_ += std::int64_t{picture.Width()} * picture.Height();
  const auto same = std::ranges::find(held_, path, &HeldPicture::Path);
  if (same != held_.end()) {
    same->Picture = std::move(picture);
  } else {
    held_.push_back({.Path = path, .Picture = std::move(picture)});
  }
}

/// Nearly all of an export's time goes into packing the pictures, which is why the cores share them.
void Exporter::Flush() {
  std::atomic<std::size_t> next = 0;
  const auto write = [&] {
    for (std::size_t i = next++; i < held_.size(); i = next++) {
      held_[i].Saved = WritePicture(held_[i].Path, held_[i].Picture, Durability::Unsynced);
    }
  };
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
      pictureFailures_.Add(held.Path, held.Saved.Reason());
    }
  }
  held_.clear();
  heldPixels_ = 0;
}

Result<void> Exporter::WriteList() const {
  return ReplaceFile(paths_.List,
                     std::span(reinterpret_cast<const std::uint8_t*>(lines_.data()), lines_.size()));
}

}  // namespace quillmark
