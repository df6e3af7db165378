#include "base/Result.h"

#include <memory>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

Result<int> Half(int number) {
  if (number % 2 != 0) {
    return Failure{"it is odd"};
  }
  return number / 2;
}

TEST(Result, HoldsTheValue) {
  const Result<int> result = Half(8);
  ASSERT_TRUE(result);
  EXPECT_EQ(*result, 4);
  EXPECT_EQ(result.Reason(), "");
}

TEST(Result, HoldsTheReasonInItsPlace) {
  const Result<int> result = Half(7);
  EXPECT_FALSE(result);
  EXPECT_EQ(result.Reason(), "it is odd");
}

TEST(Result, HandsItsReasonOnAsAnother) {
  const auto quarter = [](int number) -> Result<std::string> {
    const Result<int> half = Half(number);
    return half ? Result<std::string>(std::to_string(*half)) : half.Why();
  };
  EXPECT_EQ(quarter(7).Reason(), "it is odd");
  EXPECT_EQ(*quarter(6), "3");
}

TEST(Result, ValuesThatCannotBeCopiedAreMoved) {
  Result<std::unique_ptr<int>> result(std::make_unique<int>(5));
  const std::unique_ptr<int> taken = std::move(*result);
  EXPECT_EQ(*taken, 5);
}

TEST(Result, WithoutAValueIsDoneOrNot) {
  const Result<void> done;
  EXPECT_TRUE(done);
  EXPECT_EQ(done.Reason(), "");
  const Result<void> failed = Failure{"the disk is full"};
  EXPECT_FALSE(failed);
  EXPECT_EQ(failed.Reason(), "the disk is full");
}

}  // namespace
}  // namespace quillmark
