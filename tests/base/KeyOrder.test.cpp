#include "base/KeyOrder.h"

#include <gmock/gmock.h>
#include <limits>

namespace quillmark {
namespace {

using testing::ElementsAre;

constexpr std::int64_t LeastKey = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t MostKey = std::numeric_limits<std::int64_t>::max();

std::vector<std::uint32_t> Sorted(std::initializer_list<std::int64_t> keys) {
  std::vector<SortedRow> rows;
  for (const std::int64_t key : keys) {
    rows.push_back({.Key = key, .Row = static_cast<std::uint32_t>(rows.size())});
  }
  SortByKeys(rows);
  std::vector<std::uint32_t> order;
  for (const SortedRow& row : rows) {
    order.push_back(row.Row);
  }
  return order;
}

TEST(SortByKeys, ByEveryByteOfTheKey) {
  EXPECT_THAT(Sorted({0x0200, 0x01FF, 0x010000, 3, 0x7000000000000000}), ElementsAre(3, 1, 0, 2, 4));
}

TEST(SortByKeys, NegativeKeysComeFirst) {
  EXPECT_THAT(Sorted({0, MostKey, -1, LeastKey, 1, -256}), ElementsAre(3, 5, 2, 0, 4, 1));
}

TEST(SortByKeys, EqualKeysStayAsTheyStand) {
  EXPECT_THAT(Sorted({5, 2, 5, 2, 2}), ElementsAre(1, 3, 4, 0, 2));
}

TEST(SortByKeys, NothingAndOne) {
  EXPECT_THAT(Sorted({}), ElementsAre());
  EXPECT_THAT(Sorted({7}), ElementsAre(0));
}

}  // namespace
}  // namespace quillmark
