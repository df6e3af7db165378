#include "containers/ByteSource.h"

#include <fstream>
#include <utility>

#include "base/InputFile.h"
#include "base/Words.h"

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
    if (start != position_) {
      file_.seekg(static_cast<std::streamoff>(start));
    }
    const bool isThere = !file_.fail();
    file_.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!isThere || file_.bad()) {
      position_ = Unknown;
      return Failure{Words::Tr("it cannot be read")};
    }
    const auto found = static_cast<std::size_t>(file_.gcount());
    position_ = start + found;
    return found;
  }

 private:
  static constexpr std::uint64_t Unknown = ~std::uint64_t{0};

  std::ifstream file_;
  std::uint64_t length_;
  std::uint64_t position_ = 0;  // of the byte that the file reads next
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
