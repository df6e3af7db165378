#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>

#include <CLI/CLI.hpp>

#include "base/Decimal.h"
#include "base/Words.h"
#include "cli/Inputs.h"
#include "containers/Language.h"
#include "recipe/OptionText.h"
#include "sup/SubtitleSet.h"

/// The kinds of options and arguments that the commands have, each with its check.
namespace quillmark::cli {

/// One option with one meaning in every command that writes; the first long name is the one in messages.
inline constexpr const char* OutNames = "-o,--out,--output";

/// Refuses an option's text with `reason` unless `accepts` it.
inline CLI::Validator Accepting(const std::function<bool(const std::string&)>& accepts,
                                const std::string& reason) {
  return CLI::Validator(
      [=](const std::string& text) {
        return accepts(text) ? std::string() : Words::Tr("'%1' %2", {text, reason});
      },
      "");
}

inline CLI::Validator FrameLines() {
  return Accepting([](const std::string& text) { return text == "480" || text == "576"; },
                   Words::Tr("is neither 480 nor 576"));
}

inline CLI::Validator NamesAFile() {
  return Accepting([](const std::string& name) { return !name.empty(); }, Words::Tr("names no file"));
}

/// Decimal numbers alone: the parser's own conversion would take 0x10, and 010 for 8.
inline CLI::Validator NumberWithin(std::int64_t first, std::int64_t last) {
  const auto check = [=](const std::string& text) -> std::string {
    const auto number = ParseDecimal(text);
    if (!number) {
      return Words::Tr("'%1' is no decimal number", {text});
    }
    return *number >= first && *number <= last
               ? ""
               : Words::Tr("Value %1 not in range %2 to %3",
                           {text, std::to_string(first), std::to_string(last)});
  };
  return CLI::Validator(check, "");
}

/// The same, or a word in a number's place.
inline CLI::Validator NumberWithinOr(const std::string& word, std::int64_t first, std::int64_t last) {
  const CLI::Validator number = NumberWithin(first, last);
  return CLI::Validator([=](std::string& text) { return text == word ? std::string() : number(text); }, "");
}

/// A hexadecimal digit up to `last`, or a dot, for each pixel code; `digits` says which they are.
inline CLI::Validator DigitForEachCode(std::uint8_t last, const std::string& digits) {
  return Accepting(
      [last](const std::string& text) {
        const auto nibbles = ParseNibbles(text);
        return nibbles && std::ranges::all_of(
                              *nibbles, [last](const auto& nibble) { return nibble.value_or(0) <= last; });
      },
      Words::Tr("is not four %1 or dots", {digits}));
}

/// What a command takes that reads tracks.
inline constexpr const char* FileKinds = Words::Mark(
    "SUP file, VobSub pair (.idx), Matroska file, program stream (.vob) or authoring list (.xml)");

inline void AddFile(CLI::App* command, std::string& file, const std::string& name = "FILE",
                    const std::string& description = Words::Tr(FileKinds)) {
  command->add_option(name, file, description)->required()->type_name("")->check(NamesAFile());
}

inline void AddTrack(
    CLI::App* command, std::string& track,
    const std::string& description = Words::Tr("Track of FILE, by its number or its language"),
    const std::string& name = "--track") {
  command->add_option(name, track, description)
      ->type_name("N|LANG")
      ->check(
          Accepting([](const std::string& named) { return !named.empty(); }, Words::Tr("names no track")));
}

/// A file that a stream is read from, and which of its tracks that is.
inline void AddStream(CLI::App* command, std::string& file, std::string& track) {
  AddFile(command, file);
  AddTrack(command, track);
}

template <typename Number>
CLI::Option* AddNumber(CLI::App* command, const std::string& name, Number& number, Number first, Number last,
                       const std::string& description) {
  const auto take = [&number](const std::string& text) {
    number = static_cast<Number>(ParseDecimal(text).value_or(number));
  };
  return command->add_option_function<std::string>(name, take, description)->check(NumberWithin(first, last));
}

inline CLI::Option* AddOut(CLI::App* command, std::string& out, const std::string& type,
                           const CLI::Validator& check = CLI::Validator()) {
  return command->add_option(OutNames, out, Words::Tr("File to write; takes the place of one that exists"))
      ->required()
      ->type_name(type)
      ->check(NamesAFile())
      ->check(check);
}

inline void AddPalette(CLI::App* command, std::string& palette) {
  command
      ->add_option(
          "--palette", palette,
          Words::Tr(
              "Palette file: .ifo, .pal or .rgb; else the one that comes with FILE, or the start-up palette"))
      ->type_name("FILE")
      ->check(NamesAFile());
}

inline void AddOnly(CLI::App* command, SubtitleSet& only) {
  command
      ->add_option_function<std::string>(
          "--only", [&only](const std::string& text) { only = SubtitleSet::Parse(text).value_or(only); },
          Words::Tr(
              "Subtitles A to B, counted from 1; also A alone, A- for all from A on, and lists of these"))
      ->type_name("A-B,...")
      ->check(Accepting([](const std::string& text) { return SubtitleSet::Parse(text).has_value(); },
                        Words::Tr("is no range such as 3-7, 3 or 3-")));
}

}  // namespace quillmark::cli
