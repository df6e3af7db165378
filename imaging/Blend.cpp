#include "imaging/Blend.h"

#include <initializer_list>

namespace quillmark {
namespace {

constexpr std::uint32_t Opaque = 255;

constexpr std::uint32_t Component(std::uint32_t argb, unsigned shift) {
  return argb >> shift & 0xFF;
}

constexpr std::uint32_t RoundedQuotient(std::uint32_t dividend, std::uint32_t divisor) {
  return (dividend + divisor / 2) / divisor;
}

}  // namespace

std::uint32_t BlendOver(std::uint32_t source, std::uint32_t below) {
  const std::uint32_t sourceAlpha = Component(source, 24);
  const std::uint32_t belowAlpha = Component(below, 24);
  if (sourceAlpha == 0) {
    return below;
  }
  if (sourceAlpha == Opaque || belowAlpha == 0) {
    return source;
  }
  // Weights in units of 1/255^2, so that nothing is rounded before the components themselves are.
  const std::uint32_t sourceWeight = sourceAlpha * Opaque;
  const std::uint32_t belowWeight = belowAlpha * (Opaque - sourceAlpha);
  const std::uint32_t sum = sourceWeight + belowWeight;
  std::uint32_t result = RoundedQuotient(sum, Opaque) << 24;
  for (const unsigned shift : {0U, 8U, 16U}) {
    const std::uint32_t weighted =
        Component(source, shift) * sourceWeight + Component(below, shift) * belowWeight;
    result |= RoundedQuotient(weighted, sum) << shift;
  }
  return result;
}

}  // namespace quillmark
