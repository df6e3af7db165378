#include <QAction>
#include <QTest>

#include "app/Accessible.h"
#include "app/ImportJob.h"
#include "app/TrackDialog.h"
#include "tests/app/ControlText.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"
#include "tests/support/IfoBuilder.h"

namespace quillmark::test {
namespace {

/// What each control is called, what its tooltip says, how it is reached and what it lets itself be done
/// with.
class ControlTextsTest : public WindowTest {
 protected:
  void SetUp() override { LoadStream(ThreeSubtitles()); }
  void Trigger(const QString& action) const {
    Window.findChild<QAction*>("Action_" + action)->trigger();
    QCoreApplication::processEvents();
  }
  /// What there is in the dialog that this brings up, which is cancelled then.
  std::string In(const QString& action) {
    std::string texts;
    Dialogs.Expect(DialogKind::Other, [&](QDialog& dialog) {
      texts = ControlTexts(dialog);
      dialog.reject();
    });
    Trigger(action);
    Dialogs.Verify();
    return texts;
  }
};

TEST_F(ControlTextsTest, OfTheWindow) {
  Control<QAbstractButton>("Check_MergedCodes").click();
  EXPECT_EQ(ControlTexts(Window), R"(
Picture1 'Subtitle picture'
Loupe 'Loupe', Tab click, hidden
Strip_Recover '', hidden
Command_Recover 'Restore', 'Make the edits of this stream again that were not saved', Tab click, disabled, Return
Command_Forget 'Discard', 'Forget the edits that were not saved', Tab click, disabled, Return
Strip_Closed '', hidden
Command_Reopen 'Open it again', 'Go on with the stream that was open, as it was left', Tab click, disabled, Return
Frame1 'Background'
Option_Checker 'Checker', 'Show subtitles over grey squares', Tab click, on
Option_File 'Graph. File', 'Show subtitles over the picture file named here', click
Option_Colour 'Colour', 'Show subtitles over one colour, that of the square', click
Label_Ground 'Background colour, black', 'Click to pick the background colour', click, hand, menu of its own
Text_GraphFile 'Background picture file', 'Path of the background picture (BMP, GIF, JPEG or PNG)', Tab click
Command_GetGraphics 'Load Background graphic form file', 'Choose the background picture file', Tab click, Return
Frame2 'Size'
Option_720x480 '720x480', 'Frame of 525-line (NTSC) discs', click
Option_720x576 '720x576', 'Frame of 625-line (PAL) discs', Tab click, on
Frame3 '2nd'
Command_LoadSecond 'Load/Merge secondary SUP', 'Load a second stream and lay it over the first', Tab click, Return
Command_SaveSecond 'Save merged (prim. + sec.) SUP', 'Write both streams as one, encoded anew', Tab click, Return
Splitter_List '', stays
Text1 'SUP file', 'Path of the loaded subtitle stream', click, read only
Command_LoadSup 'Load SUP', 'Load a subtitle stream, or drop one on the window (Ctrl+O)', Tab click, Return
Command_SaveSup 'Save SUP', 'Save the stream with the colours and opacities set (Ctrl+S)', Tab click, Return
Command_LoadPalette 'Load Palette', 'Read the palette from an IFO, PAL or RGB file', Tab click, Return
Command_SavePalette 'Save Palette', 'Write the palette as a PAL or RGB file', Tab click, Return
Sup File: for Text1
Text_SubNum 'Subtitle number', 'Number of the subtitle shown; 0: none, ?: it cannot be shown', click, read only
Command_Prev 'Prev', 'Previous subtitle (PageUp, Alt+Left)', Tab click, disabled, Return
Command_Next 'Next', 'Next subtitle (PageDown, Alt+Right)', Tab click, Return
Command_GoTo 'GoTo', 'Jump to a subtitle by its number (Ctrl+G)', Tab click, Return
Command_Reload 'Reset', 'Show the subtitle as the stream has it again (F5)', Tab click, Return
Check_SavePics 'SavePics', 'Write every subtitle shown as a PNG picture, with a line in the list for authoring', Tab click
Text_StartTime 'Start time', 'Start as hours:minutes:seconds.hundredths', click, read only
Text_Dur 'Duration in seconds', 'Duration in seconds; ??? when the subtitle has no end', click, read only
Text_XPos 'X position', 'Left edge in pixels', click, read only
Text_YPos 'Y position', 'Top edge in pixels', click, read only
Text_Width 'Width', 'Width in pixels', click, read only
Text_Height 'Height', 'Height in pixels', click, read only
SubTitle # for Text_SubNum
StartTime for Text_StartTime
Duration (sec) for Text_Dur
Position (X,Y) for Text_XPos
Size (W,H) for Text_Width
Check_Player 'As a player shows it', 'Carry out all control sequences at their times: fades, moves, changes of colour', Tab click
Command_Play 'Play', 'Show the subtitle in its own time, as a player does (Ctrl+P)', Tab click, Return
Slider_Time 'Time after the subtitle's start in milliseconds', 'When after the subtitle's start the picture is shown; Space plays', Tab click, disabled, 0 to 0 by 40 or 500
Label_Time '0.00 / 0.00 s', at the right, plain or rich
Label1_0 'Palette entry 0, black', 'Click color to edit', Tab click, hand
Picture2_0 'Palette', hidden, plain or rich
Label1_1 'Palette entry 1, cyan', 'Click color to edit', click, hand
Picture2_1 'Palette', hidden, plain or rich
Label1_2 'Palette entry 2, white', 'Click color to edit', click, hand
Picture2_2 'Palette', hidden, plain or rich
Label1_3 'Palette entry 3, green', 'Click color to edit', click, hand
Picture2_3 'Palette', hidden, plain or rich
Label1_4 'Palette entry 4, yellow', 'Click color to edit', click, hand
Picture2_4 'Palette', hidden, plain or rich
Label1_5 'Palette entry 5, magenta', 'Click color to edit', click, hand
Picture2_5 'Palette', hidden, plain or rich
Label1_6 'Palette entry 6, light blue', 'Click color to edit', click, hand
Picture2_6 'Palette', hidden, plain or rich
Label1_7 'Palette entry 7, magenta', 'Click color to edit', click, hand
Picture2_7 'Palette', hidden, plain or rich
Label1_8 'Palette entry 8, light red', 'Click color to edit', click, hand
Picture2_8 'Palette', hidden, plain or rich
Label1_9 'Palette entry 9, light green', 'Click color to edit', click, hand
Picture2_9 'Palette', hidden, plain or rich
Label1_10 'Palette entry A, light blue', 'Click color to edit', click, hand
Picture2_10 'Palette', hidden, plain or rich
Label1_11 'Palette entry B, light magenta', 'Click color to edit', click, hand
Picture2_11 'Palette', hidden, plain or rich
Label1_12 'Palette entry C, grey', 'Click color to edit', click, hand
Picture2_12 'Palette', hidden, plain or rich
Label1_13 'Palette entry D, black', 'Click color to edit', click, hand
Picture2_13 'Palette', hidden, plain or rich
Label1_14 'Palette entry E, black', 'Click color to edit', click, hand
Picture2_14 'Palette', hidden, plain or rich
Label1_15 'Palette entry F, black', 'Click color to edit', click, hand
Picture2_15 'Palette', hidden, plain or rich
ImageCombo1 'Colour of the background', 'Palette entry of the background (pixel code 0)', Tab click, 0 of 16
Combo1_0 'Opacity of the background', 'Opacity of the background (pixel code 0): 0 invisible, F opaque', Tab click, 0 of 16
ImageCombo2 'Colour of the pattern', 'Palette entry of the pattern (pixel code 1)', Tab click, 1 of 16
Combo1_1 'Opacity of the pattern', 'Opacity of the pattern (pixel code 1): 0 invisible, F opaque', Tab click, 15 of 16
ImageCombo3 'Colour of the emphasis 1', 'Palette entry of the emphasis 1 (pixel code 2)', Tab click, 2 of 16
Combo1_2 'Opacity of the emphasis 1', 'Opacity of the emphasis 1 (pixel code 2): 0 invisible, F opaque', Tab click, 15 of 16
ImageCombo4 'Colour of the emphasis 2', 'Palette entry of the emphasis 2 (pixel code 3)', Tab click, 3 of 16
Combo1_3 'Opacity of the emphasis 2', 'Opacity of the emphasis 2 (pixel code 3): 0 invisible, F opaque', Tab click, 15 of 16
Command_SetActual 'Set for actual', 'Write the chosen colours and opacities into this subtitle', Tab click, Return
Command_SetSelected 'Set for selected', 'Write the chosen colours and opacities into the subtitles selected in the list', Tab click, Return
Command_SetAll 'Set for all', 'Write the chosen colours and opacities into every subtitle', Tab click, Return
Colors for ImageCombo1
Opacities for Combo1_0
Text '0 background'
Text '1 pattern'
Text '2 emphasis 1'
Text '3 emphasis 2'
ListPanel ''
Tabs_List 'Subtitles', Tab, hidden
Text_Filter 'Filter', 'Show the subtitles of these numbers (12, 100-200), the one shown at a time (1:02), or those with a problem in these words', Tab click, can be cleared, "Filter: 12, 100-200, 1:02, words"
Combo_Filter 'Kind of subtitles', 'Show the subtitles of this kind alone', Tab click wheel, 0 of 9, 14 letters
Label_Count '3 of 3', plain or rich
Strip_Time 'Time of the film'
Splitter_Problems '', stays, collapses
Text_Problems 'Problems of the subtitle', 'What is wrong with the current subtitle, and at which byte of the file', Tab click, read only, Tab goes on
List_Subtitles 'Subtitles', Tab click, menu of its own, rows, many, striped, smooth, movable, clickable, fills, fits what is in sight
  #, 'Number', right
  Picture, 'Picture'
  Start, 'Start'
  End, 'End'
  Seconds, 'Duration in seconds', right
  Place, 'Place: left and top edge in pixels'
  Size, 'Size: width and height in pixels'
  Colours, 'Colours and opacities of background, pattern, emphasis 1 and 2'
  Forced, 'Forced: shown even where subtitles are off'
  Animated, 'Animated: fades, moves or changes its colours on a player'
  Problems, 'Problems'
  Compared, 'What differs from the file compared with', hidden
Header_Subtitles '', menu of its own
ReviewPanel '', hidden
Text_Review 'Merge', click, read only
Text_LeftOut 'Left out', click, read only
Spin_YOffset 'Offset of the second stream in lines', 'Lines that the second stream's subtitles are moved down; less than 0: up', Tab click, -32768 to 32767
Slider_YOffset 'Offset of the second stream in lines', 'Move the second stream's subtitles up and down', Tab click, -576 to 576 by 1 or 16
Command_SuggestOffset 'Suggest', 'Find the offset at which the fewest pixels of the whole merge are covered or clipped, and take it', Tab click, disabled, Return
Check_MergedCodes 'Codes and colours of the result', 'Give the second stream's pixel codes others, and the result its own colours', Tab click, on
Offset for Spin_YOffset
Option_Pairs 'Pairs', 'A packet for each of the first stream's subtitles, with the second stream's one over it that is shown longest at the same time', Tab click, on
Option_Split 'Split', 'Packets for whatever is shown at a time: the first stream's subtitle alone, both, or the second stream's alone, each until its own end', Tab click
Spin_Join 'Gaps to close in milliseconds', 'Where a split merge shows nothing for less than this, the packet before is shown longer', Tab click, disabled, 0 to 3600000 ms
Close gaps &under for Spin_Join
Text_FilterPairs 'Filter of the review', 'Show the first stream's subtitles of these numbers (12, 100-200), the one shown at a time (1:02), or those with a problem in these words', Tab click, can be cleared, "Filter: 12, 100-200, 1:02, words"
Combo_FilterPairs 'Kind of problem', 'Show what has this problem alone', Tab click wheel, 0 of 17, 14 letters
Label_CountPairs '', plain or rich
Splitter_Pairs '', stays, collapses
Text_PairProblems 'What there is to know of the merged subtitle', 'What there is to know of the current row', Tab click, read only, Tab goes on
List_Pairs 'Merged subtitles', Tab click, menu of its own, rows, many, striped, smooth, movable, clickable, sorts, fills, fits what is in sight
  #, 'Number of the first stream's subtitle', right
  2nd #, 'Number of the second stream's subtitle', right
  Picture, 'The merged picture'
  ms, 'Milliseconds that both are shown together', right
  What there is to know, 'What there is to know'
  Bytes, 'Length of the unit', right
  Covered, 'Pixels of the second picture that cover the first one', right
  Clipped, 'Pixels of both pictures that are lost', right
  Recoloured, 'Pixels that get another colour', right
  Start, 'When the packet is shown', right, hidden
  Duration, 'How long the packet is shown, in seconds', right, hidden
Form_MergedCodes ''
Text '0 background'
Combo_SecondaryCode_0 'Code that the second stream's background becomes', 'Code that the second stream's background becomes', Tab click, 0 of 4, 4 letters
Combo_ResultColour_0 'Palette entry of the result's background', 'Palette entry of the result's background', Tab click, 0 of 17, 4 letters
Combo_ResultOpacity_0 'Opacity of the result's background', 'Opacity of the result's background', Tab click, 0 of 17, 4 letters
Text '1 pattern'
Combo_SecondaryCode_1 'Code that the second stream's pattern becomes', 'Code that the second stream's pattern becomes', Tab click, 1 of 4, 4 letters
Combo_ResultColour_1 'Palette entry of the result's pattern', 'Palette entry of the result's pattern', Tab click, 0 of 17, 4 letters
Combo_ResultOpacity_1 'Opacity of the result's pattern', 'Opacity of the result's pattern', Tab click, 0 of 17, 4 letters
Text '2 emphasis 1'
Combo_SecondaryCode_2 'Code that the second stream's emphasis 1 becomes', 'Code that the second stream's emphasis 1 becomes', Tab click, 2 of 4, 4 letters
Combo_ResultColour_2 'Palette entry of the result's emphasis 1', 'Palette entry of the result's emphasis 1', Tab click, 0 of 17, 4 letters
Combo_ResultOpacity_2 'Opacity of the result's emphasis 1', 'Opacity of the result's emphasis 1', Tab click, 0 of 17, 4 letters
Text '3 emphasis 2'
Combo_SecondaryCode_3 'Code that the second stream's emphasis 2 becomes', 'Code that the second stream's emphasis 2 becomes', Tab click, 3 of 4, 4 letters
Combo_ResultColour_3 'Palette entry of the result's emphasis 2', 'Palette entry of the result's emphasis 2', Tab click, 0 of 17, 4 letters
Combo_ResultOpacity_3 'Opacity of the result's emphasis 2', 'Opacity of the result's emphasis 2', Tab click, 0 of 17, 4 letters
2nd becomes for Combo_SecondaryCode_0
Colors for Combo_ResultColour_0
Opacities for Combo_ResultOpacity_0
Command_DefaultCodes 'Default', 'The second stream's codes stay, in the colours and opacities of the first stream', Tab click, Return
StatusBar ''
Status_Preview 'Preview, not set', hidden, plain or rich
Status_Problems '3 subtitles, 0 with problems', plain or rich
Status_Place '1 of 3', plain or rich
Text_Pixel 'Pixel', 'Place, pixel code, palette entry and opacity under the pointer', click, read only
)");
  EXPECT_EQ(ActionTexts(Window), R"(
Action_Column_0 '&Number', on
Action_Column_1 '&Picture', on
Action_Column_2 '&Start', on
Action_Column_3 '&End', on
Action_Column_4 '&Duration', on
Action_Column_5 'P&lace', on
Action_Column_6 'S&ize', on
Action_Column_7 '&Colours', on
Action_Column_8 '&Forced', on
Action_Column_9 '&Animated', on
Action_Column_10 'P&roblems', on
Action_SortPairs_0 'Number of the first stream's subtitle'
Action_SortPairs_1 'Number of the second stream's subtitle'
Action_SortPairs_3 'Milliseconds that both are shown together'
Action_SortPairs_4 'What there is to know'
Action_SortPairs_5 'Length of the unit'
Action_SortPairs_6 'Pixels of the second picture that cover the first one'
Action_SortPairs_7 'Pixels of both pictures that are lost'
Action_SortPairs_8 'Pixels that get another colour'
Action_SortPairs_9 'When the packet is shown', disabled, hidden
Action_SortPairs_10 'How long the packet is shown, in seconds', disabled, hidden
Action_LoadSup '&Load SUP...', Ctrl+O
Action_Import '&Import subtitles...', Ctrl+I
Action_SaveSup '&Save SUP...', Ctrl+S
Action_Export '&Export...', Ctrl+E
Action_LoadPalette 'Load &Palette...'
Action_SavePalette 'Save P&alette...'
Action_ProgramChains 'Palettes of a &title...'
Action_Reload '&Reset', F5
Action_Prev '&Prev', PgUp, Alt+Left, disabled
Action_Next '&Next', PgDown, Alt+Right
Action_GoTo '&GoTo...', Ctrl+G
Action_SetActual 'Set for a&ctual'
Action_SetSelected 'Set for &selected'
Action_SetAll 'Set for &all'
Action_LoadSecond '&Load/Merge secondary SUP...'
Action_SaveSecond '&Save merged (prim. + sec.) SUP...'
Action_GetGraphics '&Load Background graphic form file...'
Action_NextProblem 'Next pro&blem', F8
Action_PrevProblem 'Prev proble&m', Shift+F8
Action_Copy '&Copy', Ctrl+C
Action_List '&Subtitle list', Ctrl+L, on
Action_Undo '&Undo', Ctrl+Z, disabled
Action_Redo '&Redo', Ctrl+Shift+Z, disabled
Action_Reopen 'Open last stream a&gain', disabled
Action_ForgetRecent '&Forget these files'
Action_RevertPreview 'Revert &preview', disabled
Action_Recover 'Re&store unsaved edits', disabled
Action_Forget '&Discard unsaved edits', disabled
Action_720x480 '720x&480', off
Action_720x576 '720x&576', on
Action_Checker '&Checker', on
Action_File '&Graph. File', off
Action_Player 'As a player s&hows it', off
Action_Play 'Pla&y or pause', Ctrl+P
Action_PictureBehind '&Picture behind...'
Action_Colour 'Colou&r', off
Action_GroundBlack '&Black'
Action_GroundWhite '&White'
Action_GroundGrey '&Grey'
Action_GroundPick '&Pick...'
Action_SafeAreas '&Safe areas', off
Action_SubtitleArea 'Subtitle's &area', off
Action_Rulers '&Rulers', off
Action_Loupe 'Loup&e', Z, off
Action_ModeOff '&Off', on
Action_Wide '&Wide', off
Action_Letterbox '&Letterbox', off
Action_PanAndScan '&Pan and scan', off
Action_ZoomIn 'Zoom &in', Ctrl++, Ctrl+=
Action_ZoomOut 'Zoom &out', Ctrl+-
Action_Zoom100 'Zoom &100 %', Ctrl+0
Action_ZoomFit 'Zoom to fi&t', Ctrl+9, off
Action_Square 'S&quare pixels', on
Action_4x3 '&4:3', off
Action_16x9 '1&6:9', off
Action_Offset '&Offset...', disabled
Action_MergeReview 'Merge &review', Ctrl+R, on, disabled
Action_SuggestOffset 'Su&ggest offset', disabled
Action_LeaveMerge 'Leave &merge mode', disabled
Action_Retime '&Retime...', Ctrl+T
Action_Move '&Move...', Ctrl+M
Action_Force '&Force...'
Action_Ends '&Ends...'
Action_Cut '&Cut...'
Action_Keep '&Keep...'
Action_Sort '&Sort...'
Action_Join '&Join...'
Action_Fix 'F&ix...'
Action_Salvage 'Sal&vage...'
Action_SaveRecipe 'Save steps as reci&pe...', disabled
Action_RunRecipe 'R&un recipe...'
Action_Compare 'Compare &with file...', Ctrl+D
Action_Report '&Report again'
Action_Keys '&Keys', F1
Action_About '&About Quillmark'
Action_AboutQt 'About &Qt'
Action_Quit '&Quit', Ctrl+Q
)");
  EXPECT_EQ(MenuTexts(Window), R"(
Menu_SortPairs 'S&ort by': SortPairs_0, SortPairs_1, SortPairs_3, SortPairs_4, SortPairs_5, SortPairs_6, SortPairs_7, SortPairs_8, SortPairs_9, SortPairs_10
Menu_File '&File': LoadSup, Import, Menu_Recent, Reopen, -, SaveSup, Export, -, LoadPalette, SavePalette, ProgramChains, -, Quit
Menu_Recent 'Open &recent': 
Menu_Edit '&Edit': Undo, Redo, -, Copy, -, RevertPreview, -, Recover, Forget
Menu_Subtitle '&Subtitle': Prev, Next, GoTo, -, NextProblem, PrevProblem, -, Reload
Menu_Colours '&Colours': SetActual, SetSelected, SetAll
Menu_View '&View': List, Menu_Columns, -, Player, Play, -, 720x480, 720x576, -, Checker, File, Colour, -, Menu_Ground, PictureBehind, GetGraphics, -, ZoomIn, ZoomOut, Zoom100, ZoomFit, Loupe, -, Menu_Aspect, Menu_DisplayMode, Menu_Guides
Menu_Aspect 'Display &aspect': Square, 4x3, 16x9
Menu_DisplayMode '&Display mode': ModeOff, Wide, Letterbox, PanAndScan
Menu_Guides 'G&uides': SafeAreas, SubtitleArea, Rulers
Menu_Ground '&Background colour': GroundBlack, GroundWhite, GroundGrey, GroundPick
Menu_Columns 'List colu&mns': Column_0, Column_1, Column_2, Column_3, Column_4, Column_5, Column_6, Column_7, Column_8, Column_9, Column_10
Menu_Tools '&Tools': Retime, Ends, Move, Force, -, Cut, Keep, Join, Sort, -, Fix, Salvage, -, SaveRecipe, RunRecipe, -, Compare
Menu_Merge '&Merge': LoadSecond, Offset, SuggestOffset, MergeReview, SaveSecond, -, LeaveMerge
Menu_Help '&Help': Report, Keys, -, About, AboutQt
)");
}

TEST_F(ControlTextsTest, OfTheToolsDialogs) {
  EXPECT_EQ(In("Retime"), R"(
Text 'Moves or stretches the start times, and the delays with them.'
Combo_Way 'How', Tab click wheel, 0 of 4
&How for Combo_Way
Field_from 'Timed for', Tab click wheel, 2 of 4
Ti&med for for Field_from
Field_to 'Wanted for', Tab click wheel, 0 of 4
&Wanted for for Field_to
Field_scale 'Scale', Tab click
Text 'times, such as 25/24'
Sca&le for Field_scale
Field_shift 'Shift', Tab click
Text 'ms, later; a negative number is earlier'
&Shift for Field_shift
Field_points 'Two points', Tab click
Text 'number=start time, twice'
Two &points for Field_points
Option_All 'All 3 subtitles', Tab click, on
Option_Selected 'Those selected in the list: 1', Tab click
Option_These 'These:', Tab click
Text_Only 'Numbers of the subtitles', 'Numbers and ranges: 3,7-9,20-', Tab click
Text 'Now'
Text 'Then'
Text 'Number'
Label_Now_0 'Number now', plain or rich
Label_Then_0 'Number then', plain or rich
Text 'Start'
Label_Now_1 'Start now', plain or rich
Label_Then_1 'Start then', plain or rich
Text 'End'
Label_Now_2 'End now', plain or rich
Label_Then_2 'End then', plain or rich
Text 'Position (X,Y)'
Label_Now_3 'Position (X,Y) now', plain or rich
Label_Then_3 'Position (X,Y) then', plain or rich
Text 'Size (W,H)'
Label_Now_4 'Size (W,H) now', plain or rich
Label_Then_4 'Size (W,H) then', plain or rich
Text 'Forced'
Label_Now_5 'Forced now', plain or rich
Label_Then_5 'Forced then', plain or rich
Picture_Trial 'The subtitle in the frame'
Label_Outcome '0 subtitles would be retimed', plain, wraps
Text_Left 'Subtitles that have to be left, and why', Tab click, hidden, read only, Tab goes on, remembers
Button 'Cancel', Tab click, Return
Command_Run 'Retime', Tab click, disabled, default
)");
  EXPECT_EQ(In("Move"), R"(
Text 'Moves the pictures within the frame. They are not encoded anew.'
Combo_Way 'How', Tab click wheel, 0 of 2
&How for Combo_Way
Field_x 'X', Tab click
Text 'pixels to the right; negative: to the left'
&X for Field_x
Field_y 'Y', Tab click
Text 'lines down; negative: up'
&Y for Field_y
Field_to-line 'To line', Tab click
Text 'of the bottom edge, from 0'
To &line for Field_to-line
Field_frame 'Frame', Tab click wheel, 1 of 2
&Frame for Field_frame
Field_clamp 'Clamp: move what would leave the frame as far as it goes', Tab click
Option_All 'All 3 subtitles', Tab click, on
Option_Selected 'Those selected in the list: 1', Tab click
Option_These 'These:', Tab click
Text_Only 'Numbers of the subtitles', 'Numbers and ranges: 3,7-9,20-', Tab click
Text 'Now'
Text 'Then'
Text 'Number'
Label_Now_0 'Number now', plain or rich
Label_Then_0 'Number then', plain or rich
Text 'Start'
Label_Now_1 'Start now', plain or rich
Label_Then_1 'Start then', plain or rich
Text 'End'
Label_Now_2 'End now', plain or rich
Label_Then_2 'End then', plain or rich
Text 'Position (X,Y)'
Label_Now_3 'Position (X,Y) now', plain or rich
Label_Then_3 'Position (X,Y) then', plain or rich
Text 'Size (W,H)'
Label_Now_4 'Size (W,H) now', plain or rich
Label_Then_4 'Size (W,H) then', plain or rich
Text 'Forced'
Label_Now_5 'Forced now', plain or rich
Label_Then_5 'Forced then', plain or rich
Picture_Trial 'The subtitle in the frame'
Label_Outcome '0 subtitles would be moved', plain, wraps
Text_Left 'Subtitles that have to be left, and why', Tab click, hidden, read only, Tab goes on, remembers
Button 'Cancel', Tab click, Return
Command_Run 'Move', Tab click, disabled, default
)");
  EXPECT_EQ(In("Join"), R"(
Text 'Adds the subtitles of another stream after the last one.'
Combo_Way 'How', Tab click wheel, 0 of 2
&How for Combo_Way
Field_with 'With', Tab click
Command_Browse 'Browse...', Tab click
&With for Field_with
Field_gap 'Gap', Tab click
Text 'ms after the last end'
&Gap for Field_gap
Field_at 'At', Tab click
Text 'its start, such as 1:02:03.5'
&At for Field_at
Text 'Now'
Text 'Then'
Text 'Number'
Label_Now_0 'Number now', plain or rich
Label_Then_0 'Number then', plain or rich
Text 'Start'
Label_Now_1 'Start now', plain or rich
Label_Then_1 'Start then', plain or rich
Text 'End'
Label_Now_2 'End now', plain or rich
Label_Then_2 'End then', plain or rich
Text 'Position (X,Y)'
Label_Now_3 'Position (X,Y) now', plain or rich
Label_Then_3 'Position (X,Y) then', plain or rich
Text 'Size (W,H)'
Label_Now_4 'Size (W,H) now', plain or rich
Label_Then_4 'Size (W,H) then', plain or rich
Text 'Forced'
Label_Now_5 'Forced now', plain or rich
Label_Then_5 'Forced then', plain or rich
Picture_Trial 'The subtitle in the frame'
Label_Outcome 'Join needs with', plain, wraps
Text_Left 'Subtitles that have to be left, and why', Tab click, hidden, read only, Tab goes on, remembers
Button 'Cancel', Tab click, Return
Command_Run 'Join', Tab click, disabled, default
)");
}

TEST_F(ControlTextsTest, OfExport) {
  EXPECT_EQ(In("Export"), R"(
Combo_What 'What', Tab click wheel, 0 of 4
&What for Combo_What
Option_All 'All 3', Tab click, on
Option_Selected 'Those selected in the list: 1', Tab click
Text 'Subtitles'
Text_Path 'File', Tab click
Command_Browse 'Browse...', Tab click
&File for Text_Path
Combo_Language 'Language', 'What players call the subtitles; the subtitles are not changed', Tab click wheel, disabled, 0 of 181
&Language for Combo_Language
Label_Files 'Writes movie_new.sup', at the top, plain, wraps
Button 'Cancel', Tab click, Return
Command_Export 'Export', Tab click, default
)");
}

TEST_F(ControlTextsTest, OfTheListsOfOtherFiles) {
  Dialogs.ExpectOpen(
      Write("vts_01_0.ifo", TitleSetFile({{.Category = 0x81, .Palette = {{0x10, 0x80, 0x80}}}})));
  EXPECT_EQ(In("ProgramChains"), R"(
Program &chains of vts_01_0.ifo for List_ProgramChains
List_ProgramChains 'Program chains of vts_01_0.ifo', Tab click, rows, one, editable, clickable, fills, headings at the left
  Chain
  What it is
  Programs
  Cells
  Palette
  Subtitle
Picture_Chain 'The current subtitle in the palette of the chosen chain'
Button 'Cancel', Tab click, Return
Command_Use 'Use this palette', Tab click, default
)");
  Dialogs.ExpectOpen(Write("other.sup", ThreeSubtitles()));
  Trigger("Compare");
  EXPECT_EQ(ControlTexts(Control<QWidget>("CompareWindow")), R"(
Label_Differences '3 subtitles the same', click, plain, wraps, selectable
Check_OnlyDifferences 'Only differences', 'Leave out the subtitles that are the same in both files', Tab click, on
Command_CloseCompare 'Close', Tab click
Splitter '', stays, stays
Label_TitleHere 'Here: subtitle 1', plain
Frame_Here 'Picture here'
Label_FactsHere 'Start 00:00:01.00   End 00:00:02.11   Seconds 1.12   Place 100, 400   Size 8x2   Colours 0123   Opacities 0FFF   Forced no', at the top, rich, wraps
Label_TitleThere 'other.sup: subtitle 1', plain
Frame_There 'Picture in the other file'
Label_FactsThere 'Start 00:00:01.00   End 00:00:02.11   Seconds 1.12   Place 100, 400   Size 8x2   Colours 0123   Opacities 0FFF   Forced no', at the top, rich, wraps
List_Differences 'Differences', Tab click, rows, one, striped, smooth, movable, clickable, fills, fits what is in sight
  # here, 'Number here', right
  # there, 'Number in the other file', right
  Start, 'Start here or, where it is added, in the other file'
  Differences, 'What differs'
)");
}

TEST(TrackDialogTexts, OfTheDialog) {
  InstallAccessibility();  // as the window does before it
  ImportedFile file;
  file.Tracks.push_back(
      {.What = {.Id = "0x20", .Language = "de", .Name = {}, .Palette = {}, .Packets = {}, .Notes = {}},
       .Loaded = *IndexPrimaryStream(ThreeSubtitles())});
  const DvdPalette present{};
  const TrackDialog dialog("movie.vob", file, present, nullptr);
  EXPECT_EQ(ControlTexts(dialog), R"(
&Tracks of movie.vob for List_Tracks
List_Tracks 'Tracks of movie.vob', Tab click, rows, one, clickable, fills, headings at the left
  Track
  Language
  Name, hidden
  Subtitles
  First
  Last
  Palette
  First picture
Text_Notes 'What was noted in reading', Tab click, hidden, read only, Tab goes on, remembers
Combo_Second 'Merge with', 'As Load/Merge secondary SUP does with a file', Tab click wheel, 0 of 1
&Merge with for Combo_Second
Button 'Cancel', Tab click, Return
Command_Open 'Open', Tab click, default
)");
}

}  // namespace
}  // namespace quillmark::test
