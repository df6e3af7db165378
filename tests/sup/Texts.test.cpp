// What is said of a subtitle that a tool leaves, and of one that was mended.

#include <gtest/gtest.h>

#include "sup/Mend.h"
#include "sup/ToolResult.h"

namespace quillmark {
namespace {

TEST(LeftText, SaysWhyASubtitleIsLeft) {
  const auto text = [](LeftReason why) { return LeftText({.Number = 1, .Why = why}); };
  EXPECT_EQ(text(LeftReason::NoColour), "has no colour command; it is left as it is");
  EXPECT_EQ(text(LeftReason::NoContrast), "has no contrast command; it is left as it is");
  EXPECT_EQ(text(LeftReason::NoColourNoContrast),
            "has neither a colour nor a contrast command; it is left as it is");
  EXPECT_EQ(text(LeftReason::NoStart), "has no start command; it is left as it is");
  EXPECT_EQ(text(LeftReason::NoArea), "has no display area; it is left as it is");
  EXPECT_EQ(text(LeftReason::LeavesFrame), "would leave the frame; it is left as it is");
  EXPECT_EQ(text(LeftReason::BadColourChange),
            "has a damaged change of colours within the picture; it is left as it is");
  EXPECT_EQ(text(LeftReason::NoNext),
            "is the last one, so that no next start says when it ends; it is left as it is");
  EXPECT_EQ(text(LeftReason::NoRoom), "cannot end before the next one starts; it is left as it is");
  EXPECT_EQ(text(LeftReason::NotAsLong),
            "is shown as long as the next one's start allows, which is shorter than asked for");
  EXPECT_EQ(text(LeftReason::EndElsewhere),
            "has an end that is not read from its stop command; it is left as it is");
  EXPECT_EQ(text(LeftReason::UnitFull),
            "has no room for a stop command within 32767 bytes; it is left as it is");
  EXPECT_EQ(text(LeftReason::NotMended), "has a problem that cannot be mended");
  EXPECT_EQ(text(LeftReason::DataAfterControl),
            "has picture data behind its control sequences; it is left as it is");
}

TEST(MendText, SaysWhatWasMended) {
  const auto text = [](MendKind kind) { return MendText({.Kind = kind, .Packet = 1, .Numbers = {12, 34}}); };
  EXPECT_EQ(text(MendKind::DroppedBytes), "34 bytes at offset 12 are no packet and were left out");
  EXPECT_EQ(text(MendKind::CorrectedSize), "the unit's size is 34, not 12");
  EXPECT_EQ(text(MendKind::AddedEndMark), "a control sequence got its end mark 0xFF");
  EXPECT_EQ(text(MendKind::ClosedSequences), "the last control sequence points to itself now, not to 12");
  EXPECT_EQ(text(MendKind::MadeEven), "the unit of 12 bytes got one more");
  EXPECT_EQ(text(MendKind::PutInOrder), "it was put in the order of starts; it was packet 12");
  EXPECT_EQ(text(MendKind::AddedEnd), "it got an end, a delay of 34");
  EXPECT_EQ(text(MendKind::CutEnd), "its end came after the next start; its delay is 34, not 12");
  EXPECT_EQ(text(MendKind::MovedArea),
            "its display area was moved into the frame, 12 pixels to the right and 34 lines down");
}

}  // namespace
}  // namespace quillmark
