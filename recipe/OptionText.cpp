#include "recipe/OptionText.h"

#include <array>

#include "base/Decimal.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

constexpr std::int32_t TicksPerMillisecond = 90;

struct Speed {
  std::string_view Name;
  Ratio PicturesASecond;
};
constexpr std::array<Speed, 6> Speeds = {{{"24000/1001", {24000, 1001}},
                                          {"23.976", {24000, 1001}},
                                          {"24", {24, 1}},
                                          {"25", {25, 1}},
                                          {"30000/1001", {30000, 1001}},
                                          {"29.97", {30000, 1001}}}};

/// Digits alone, and not more than 64 bits hold.
std::optional<std::int64_t> ParseCount(std::string_view text) {
  return text.find_first_not_of("0123456789") == std::string_view::npos ? ScaleDecimal(text, 1)
                                                                        : std::nullopt;
}

std::optional<TimePoint> ParsePoint(std::string_view text) {
  const auto equals = text.find('=');
  if (equals == std::string_view::npos) {
    return std::nullopt;
  }
  const auto number = ParseCount(text.substr(0, equals));
  const auto time = ParseTime(text.substr(equals + 1));
  return number && *number > 0 && time ? std::optional(TimePoint{.Number = *number, .Time = *time})
                                       : std::nullopt;
}

}  // namespace

std::optional<std::int64_t> ParseMilliseconds(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) {
    text.remove_prefix(1);
  }
  const auto ticks = ScaleDecimal(text, TicksPerMillisecond);
  return ticks && isNegative ? std::optional(-*ticks) : ticks;
}

std::optional<std::int64_t> ParseTime(std::string_view text) {
  const auto lastColon = text.rfind(':');
  if (lastColon == std::string_view::npos) {
    return ScaleDecimal(text, TicksPerSecond);
  }
  const std::string_view secondsText = text.substr(lastColon + 1);
  const std::string_view before = text.substr(0, lastColon);
  const auto firstColon = before.find(':');
  const bool hasHours = firstColon != std::string_view::npos;
  const auto hours = hasHours ? ParseCount(before.substr(0, firstColon)) : std::optional<std::int64_t>(0);
  const auto minutes = ParseCount(hasHours ? before.substr(firstColon + 1) : before);
  const auto wholeSeconds = ParseCount(secondsText.substr(0, secondsText.find('.')));
  const auto seconds = ScaleDecimal(secondsText, TicksPerSecond);
  if (!hours || !minutes || !wholeSeconds || !seconds || (hasHours && *minutes >= 60) ||
      *wholeSeconds >= 60) {
    return std::nullopt;
  }
  const auto ticks = [](std::int64_t count, std::int64_t each) {
    return Scaler({.Numerator = each, .Denominator = 1}).Rounded(count);
  };
  const auto hourTicks = ticks(*hours, 3600 * TicksPerSecond);
  const auto minuteTicks = ticks(*minutes, 60 * TicksPerSecond);
  const auto sum = hourTicks && minuteTicks ? Sum(*hourTicks, *minuteTicks) : std::nullopt;
  return sum ? Sum(*sum, *seconds) : std::nullopt;
}

std::optional<Ratio> ParseRatio(std::string_view text) {
  const auto slash = text.find('/');
  const auto numerator = ParseCount(text.substr(0, slash));
  const auto denominator =
      slash == std::string_view::npos ? std::optional<std::int64_t>(1) : ParseCount(text.substr(slash + 1));
  return numerator && denominator && *numerator > 0 && *denominator > 0
             ? std::optional(Ratio{.Numerator = *numerator, .Denominator = *denominator})
             : std::nullopt;
}

std::optional<Ratio> ParseSpeed(std::string_view text) {
  for (const Speed& speed : Speeds) {
    if (speed.Name == text) {
      return speed.PicturesASecond;
    }
  }
  return std::nullopt;
}

std::optional<RetimeOptions::Line> ParsePoints(std::string_view text) {
  const auto comma = text.find(',');
  if (comma == std::string_view::npos) {
    return std::nullopt;
  }
  const auto a = ParsePoint(text.substr(0, comma));
  const auto b = ParsePoint(text.substr(comma + 1));
  return a && b && a->Number != b->Number ? std::optional(RetimeOptions::Line{.A = *a, .B = *b})
                                          : std::nullopt;
}

std::optional<ChosenNibbles> ParseNibbles(std::string_view text) {
  ChosenNibbles nibbles{};
  if (text.size() != nibbles.size()) {
    return std::nullopt;
  }
  for (std::size_t code = 0; code < nibbles.size(); ++code) {
    if (text[code] == '.') {
      continue;
    }
    const auto digit = std::string_view("0123456789ABCDEFabcdef").find(text[code]);
    if (digit == std::string_view::npos) {
      return std::nullopt;
    }
    nibbles[code] = static_cast<std::uint8_t>(digit < 16 ? digit : digit - 6);
  }
  return nibbles;
}

}  // namespace quillmark
