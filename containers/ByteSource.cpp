#include "containers/ByteSource.h"

#include <fstream>
#include <utility>

#include "base/InputFile.h"

namespace quillmark {
namespace {

class FileSource : public ByteSource {
 public:
  FileSource(std::ifstream file, std::uint64_t length) : file_(std::move(file)), length_(length) {}

  [[nodiscard]] std::uint64_t Length() const override { return length_; }
  [[nodiscard]] Result<std::size_t> ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) override {
    if (start >= length_) {
      return std::size_t{0};
    }
    file_.clear();
    if (!file_.seekg(static_cast<std::streamoff>(start))) {
      return Failure{"it cannot be read"};
    }
    file_.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (file_.bad()) {
      return Failure{"it cannot be read"};
    }
    return static_cast<std::size_t>(file_.gcount());
  }

 private:
  std::ifstream file_;
  std::uint64_t length_;
};

}  // namespace

Result<std::unique_ptr<ByteSource>> OpenFileSource(const std::filesystem::path& path) {
  std::ifstream file;
  const auto length = OpenInputFile(path, file);
  if (!length) {
    return length.Why();
  }
  return std::unique_ptr<ByteSource>(std::make_unique<FileSource>(std::move(file), *length));
}

}  // namespace quillmark
