#pragma once

#include <algorithm>
#include <initializer_list>
#include <vector>

#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

/// What the tests of merging share. Times are counted in delay units, that is thousands of ticks.
namespace quillmark::test {

inline const QColor TextColour(3, 253, 251);  ///< of code 1 in FourCodes(), whose first such pixel is x + 2

struct Timing {
  int Start = 0;
  unsigned Delay = 0;
};

/// Subtitles of the first language, all at (100, 100).
inline Bytes PrimaryStream(std::initializer_list<Timing> timings) {
  Bytes stream;
  for (const Timing& timing : timings) {
    stream =
        Join({stream, FourCodes(PacketBuilder().Time(timing.Start * 1000).Delay(timing.Delay), 100, 100)});
  }
  return stream;
}

/// Subtitles of the second language; the one of index k is at (200, 200 + 20 k), so that it is told by its
/// place.
inline Bytes SecondaryStream(std::initializer_list<int> starts) {
  Bytes stream;
  unsigned y = 200;
  for (const int start : starts) {
    stream = Join({stream, FourCodes(PacketBuilder().Time(start * 1000), 200, y)});
    y += 20;
  }
  return stream;
}

/// The second of ThreeSubtitles() shows code 1 in another entry.
inline Bytes SeveralColours() {
  Bytes stream = ThreeSubtitles();
  stream[PacketBuilder::Length + ColourArguments + 1] = 0x50;
  return stream;
}

inline Bytes SeveralOpacities() {
  Bytes stream = ThreeSubtitles();
  stream[PacketBuilder::Length + ContrastArguments + 1] = 0x80;
  return stream;
}

class MergeTest : public WindowTest {
 protected:
  /// Load/Merge secondary SUP: chooses the file, confirms the report and answers the offset box.
  void Merge(const Bytes& secondary, const QString& offset = "0") {
    Dialogs.ExpectOpen(Write("second.sup", secondary));
    ExpectSecondaryReport();
    Dialogs.ExpectInput(offset);
    Click("Command_LoadSecond");
    Dialogs.Verify();
  }
  void ExpectSecondaryReport() { Dialogs.ExpectMessageWith({"Found secondary Subtitles: "}); }

  void SaveMergedTo(const QString& path) {
    Dialogs.ExpectSave(path);
    Click("Command_SaveSecond");
    Dialogs.Verify();
  }
  /// Save merged into a new file; what was written.
  Bytes MergedBytes() {
    const QString path = Path("merged.sup");
    QFile::remove(path);
    SaveMergedTo(path);
    return Read(path);
  }
  /// Loads what was saved, as a stream of its own.
  void LoadMerged() { Load(Path("merged.sup")); }

  [[nodiscard]] bool TextIsAt(int x, int y) const { return FrameColour(x + 2, y) == TextColour; }
  /// The indices of all subtitles of a SecondaryStream() that are on the frame.
  [[nodiscard]] std::vector<int> ShownSecondaries() const {
    const QImage frame = Frame();
    std::vector<int> shown;
    for (int k = 0; 200 + 20 * k < frame.height(); ++k) {
      if (frame.pixelColor(202, 200 + 20 * k) == TextColour) {
        shown.push_back(k);
      }
    }
    return shown;
  }
};

/// All controls that merge mode disables.
inline QStringList EditingControls() {
  QStringList names = {"Command_Reload",      "Command_SetActual", "Command_SetAll", "Command_LoadPalette",
                       "Command_SavePalette", "Command_SaveSup",   "ImageCombo1",    "ImageCombo2",
                       "ImageCombo3",         "ImageCombo4",       "Frame1",         "Frame2"};
  for (int i = 0; i < 4; ++i) {
    names.append(Element("Combo1", i));
  }
  for (int i = 0; i < 16; ++i) {
    names.append(Element("Label1", i));
  }
  return names;
}

}  // namespace quillmark::test
