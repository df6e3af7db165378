#include <algorithm>
#include <csignal>
#include <poll.h>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QThreadPool>

#include "app/Document.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

/// What an edit can change.
struct Shown {
  Bytes Stream;
  DvdPalette Palette{};

  bool operator==(const Shown&) const = default;
};

/// Long enough for journal records that reach over an end of the pages in which the system writes.
Bytes LongStream() {
  Bytes stream;
  for (int i = 0; i < 250; ++i) {
    const Bytes packet = FourCodes(PacketBuilder().Time(i * Second).Delay(50));
    stream.insert(stream.end(), packet.begin(), packet.end());
  }
  return stream;
}

class RecoveryAfterKill : public WindowTest {
 protected:
  static constexpr int Edits = 12;
  /// In milliseconds: long after the slowest copy has answered, it counts as stuck.
  static constexpr int MaxWait = 60000;

  template <class Object>
  [[nodiscard]] Object& Named(const char* name) const {
    return *Window.findChild<Object*>(name);
  }

  void LoadAgain() {
    Dialogs.ExpectReport();
    Window.OpenCommandLine(path_);
    Dialogs.Verify();
  }

  /// The edit of this number, of any kind, the same in every run.
  void Edit(int number) {
    std::mt19937 chance(static_cast<unsigned>(number));
    const auto entry = static_cast<int>(chance() % 16);
    switch (chance() % 6) {
      case 0: {
        DvdPalette palette = Window.Content().Palette();
        palette[static_cast<std::size_t>(entry)] ^= 0x123456U;
        EXPECT_TRUE(Window.Content().SetPalette(palette, "Load Palette"));
        break;
      }
      case 1:
        Named<QAction>("Action_Undo").trigger();
        break;
      case 2:
        Named<QAction>("Action_Redo").trigger();
        break;
      case 3:
        Named<QComboBox>("ImageCombo3").setCurrentIndex(entry);
        Named<QAction>("Action_SetActual").trigger();
        break;
      default:
        Named<QComboBox>("ImageCombo2").setCurrentIndex(entry);
        Named<QAction>("Action_SetAll").trigger();
        break;
    }
  }

  [[nodiscard]] Shown Current() {
    const SupStream& stream = Window.Content().Primary();
    return {.Stream = {stream.RawBytes.begin(), stream.RawBytes.begin() + stream.FileLength},
            .Palette = Window.Content().Palette()};
  }

  void UndoAll() {
    while (Named<QAction>("Action_Undo").isEnabled()) {
      Named<QAction>("Action_Undo").trigger();
    }
  }

  /// Qt paints large pictures with threads, which a copy does not have; without them it starts its own. One
  /// that is about to end may still hold a lock of the memory's, which nobody would ever give free in the
  /// copy.
  static void WaitForOtherThreads() {
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone());
    const QDir threads("/proc/self/task");
    while (threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size() > 1) {
      std::this_thread::yield();
    }
  }

  /// Has a copy of this program do the edits, kills it when it has told of `told` of them, wherever it is
  /// then in one of the next, and answers how many it had told of by then.
  int KillBehind(int told) {
    WaitForOtherThreads();
    int ends[2] = {};
    EXPECT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) {
      for (int i = 0; i < Edits; ++i) {
        Edit(i);
        if (::write(ends[1], "", 1) != 1) {
          ::_exit(1);
        }
      }
      for (;;) {
        ::pause();
      }
    }
    ::close(ends[1]);
    int count = 0;
    char byte = 0;
    pollfd waiting{.fd = ends[0], .events = POLLIN, .revents = 0};
    while (count < told && ::poll(&waiting, 1, MaxWait) == 1 && ::read(ends[0], &byte, 1) == 1) {
      ++count;
    }
    EXPECT_EQ(count, told) << "the copy of the program does not go on";
    ::kill(child, SIGKILL);
    while (::read(ends[0], &byte, 1) == 1) {
      ++count;
    }
    ::close(ends[0]);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself";
    return count;
  }

  QString path_ = Write("movie.sup", LongStream());
};

TEST_F(RecoveryAfterKill, WhatIsRestoredIsTheStateBeforeOrBehindTheLastEdit) {
  // What is shown is no matter here, and painting it would take most of the time.
  Window.setUpdatesEnabled(false);
  LoadAgain();
  std::vector<Shown> states = {Current()};
  for (int i = 0; i < Edits; ++i) {
    Edit(i);
    states.push_back(Current());
  }
  UndoAll();
  ASSERT_EQ(Current(), states[0]);

  std::mt19937 chance(1);
  for (int kill = 0; kill < 200; ++kill) {
    LoadAgain();
    ASSERT_FALSE(Named<QWidget>("Strip_Recover").isVisible());
    const int told = KillBehind(static_cast<int>(chance() % (Edits / 2)));
    LoadAgain();
    if (Named<QWidget>("Strip_Recover").isVisible()) {
      Click("Command_Recover");
    }
    const Shown restored = Current();
    const auto last = static_cast<std::size_t>(told);
    ASSERT_TRUE(restored == states[last] || (last + 1 < states.size() && restored == states[last + 1]))
        << "killed after edit " << told;
    UndoAll();
    ASSERT_EQ(Current(), states[0]);
  }
}

}  // namespace
}  // namespace quillmark::test
