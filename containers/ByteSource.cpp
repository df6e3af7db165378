#include "containers/ByteSource.h"

#include <utility>

#include <QFile>
#include <QFileInfo>

#include "base/FilePath.h"

namespace quillmark {
namespace {

class FileSource : public ByteSource {
 public:
  explicit FileSource(const QString& path) : file_(path) {}

  Result<void> Open() {
    if (!QFileInfo(file_).isFile()) {
      return QFileInfo::exists(file_.fileName()) ? Failure{"it is no file"}
                                                 : Failure{"there is no such file"};
    }
    // A buffer of its own would copy every byte once more.
    if (!file_.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
      return Failure{file_.errorString().toStdString()};
    }
    length_ = static_cast<std::uint64_t>(file_.size());
    return {};
  }

  [[nodiscard]] std::uint64_t Length() const override { return length_; }
  [[nodiscard]] Result<std::size_t> ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) override {
    if (start >= length_) {
      return std::size_t{0};
    }
    if (!file_.seek(static_cast<qint64>(start))) {
      return Failure{file_.errorString().toStdString()};
    }
    std::size_t found = 0;
    while (found < bytes.size()) {
      const qint64 read = file_.read(reinterpret_cast<char*>(bytes.data() + found),
                                     static_cast<qint64>(bytes.size() - found));
      if (read < 0) {
        return Failure{file_.errorString().toStdString()};
      }
      if (read == 0) {
        break;
      }
      found += static_cast<std::size_t>(read);
    }
    return found;
  }

 private:
  QFile file_;
  std::uint64_t length_ = 0;
};

}  // namespace

Result<std::unique_ptr<ByteSource>> OpenFileSource(const std::filesystem::path& path) {
  auto source = std::make_unique<FileSource>(QString::fromStdString(Utf8FromPath(path)));
  if (const auto opened = source->Open(); !opened) {
    return opened.Why();
  }
  return std::unique_ptr<ByteSource>(std::move(source));
}

}  // namespace quillmark
