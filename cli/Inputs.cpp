#include "cli/Inputs.h"

#include "base/FilePath.h"
#include "files/ReplaceFile.h"
#include "palette/PaletteFile.h"

namespace quillmark::cli {
CommandResult ResultOf(const Result<LoadedStream>& loaded, const std::string& file) {
  if (!loaded) {
    return Failed(file, loaded.Reason());
  }
  if (loaded->LostSignature) {
    return Failed(file, "No SUP signature found; 'quillmark-cli check' tells where");
  }
  return {};
}

CommandResult LoadStream(const std::string& file, SupStream& stream) {
  Result<LoadedStream> loaded = LoadPrimaryStream(PathFromUtf8(file), InvalidFirst::IsPassed);
  CommandResult result = ResultOf(loaded, file);
  if (result.IsDone()) {
    stream = std::move(loaded->Stream);
  }
  return result;
}

std::optional<SubtitleDescription> SubtitleReader::Read(std::size_t index) {
  return DescribeSubtitle(UnitOf(stream_, index, unit_));
}

CommandResult CheckOnly(const SubtitleSet& only, const std::string& file, const SupStream& stream) {
  const auto outside = only.Outside(stream.Count);
  return outside ? WrongUsage(file, "there is no " + SubtitleText(*outside) + ": it has " +
                                        std::to_string(stream.Count))
                 : CommandResult();
}

std::string SubtitleText(std::int64_t number) {
  return "subtitle " + std::to_string(number);
}

CheckProfile ProfileOf(std::string_view name) {
  return name == "player" ? CheckProfile::Player : CheckProfile::Spec;
}

CommandResult LoadPalette(const std::string& file, DvdPalette& palette) {
  palette = StartUpPalette;
  if (file.empty()) {
    return {};
  }
  const auto packed = LoadPaletteFile(file);
  if (!packed) {
    return Failed(file, packed.Reason());
  }
  palette = ToRgb(*packed);
  return {};
}

CommandResult ToText(const std::string& file, QString& text) {
  text = QString::fromStdString(file);
  return text.toStdString() == file ? CommandResult() : Failed(file, "the name is not in UTF-8");
}

CommandResult WriteFile(const std::string& file, std::span<const std::uint8_t> bytes) {
  QString path;
  if (CommandResult named = ToText(file, path); !named.IsDone()) {
    return named;
  }
  const auto written = ReplaceFile(path, bytes);
  return written ? CommandResult() : Failed(file, written.Reason());
}

}  // namespace quillmark::cli
