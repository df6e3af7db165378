// Writes the sample streams into a folder: text drawn with Qt, reduced to four codes and encoded.

#include <cstdint>
#include <cstdio>
#include <vector>

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QSize>
#include <QString>

#include "samples/Captions.h"
#include "samples/SamplePacket.h"
#include "samples/TextPicture.h"

namespace quillmark {
namespace {

constexpr QSize Pal(720, 576);
constexpr QSize Ntsc(720, 480);

bool WriteSample(const QString& path, const std::vector<Caption>& captions, const QSize& frame) {
  std::vector<std::uint8_t> stream;
  for (const Caption& caption : captions) {
    const auto picture = DrawCaption(caption, frame);
    if (!picture) {
      std::fputs("quillmark-make-samples: the font DejaVu Sans is missing (package fonts-dejavu-core)\n",
                 stderr);
      return false;
    }
    AppendSamplePacket(caption, *picture, stream);
  }
  QFile file(path);
  const auto size = static_cast<qint64>(stream.size());
  if (!file.open(QIODevice::WriteOnly) ||
      file.write(reinterpret_cast<const char*>(stream.data()), size) != size || !file.flush()) {
    std::fprintf(stderr, "quillmark-make-samples: %s: %s\n", qPrintable(path),
                 qPrintable(file.errorString()));
    return false;
  }
  return true;
}

bool WriteSamples(const QDir& folder) {
  return WriteSample(folder.filePath("demo.sup"), DemoCaptions(), Pal) &&
         WriteSample(folder.filePath("ntsc.sup"), NtscCaptions(), Ntsc) &&
         WriteSample(folder.filePath("first.sup"), FirstCaptions(), Pal) &&
         WriteSample(folder.filePath("second.sup"), SecondCaptions(), Pal);
}

}  // namespace
}  // namespace quillmark

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  if (argc != 2) {
    std::fputs("usage: quillmark-make-samples FOLDER\n", stderr);
    return 2;
  }
  return quillmark::WriteSamples(QDir(QString::fromLocal8Bit(argv[1]))) ? 0 : 1;
}
