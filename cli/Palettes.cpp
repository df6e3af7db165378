#include <cstddef>
#include <string>

#include "base/FilePath.h"
#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Json.h"
#include "containers/Ifo.h"

namespace quillmark::cli {
namespace {

std::string RowText(std::size_t number, const ProgramChain& chain) {
  std::string text = std::to_string(number) + "  ";
  text += ChainText(chain);
  text += "  ";
  text += Words::Tr("%n program", "%n programs", chain.Programs);
  text += ", ";
  text += chain.IsDummy() ? Words::Tr("no picture") : Words::Tr("%n cell", "%n cells", chain.Cells);
  text += " ";
  for (const Rgb colour : chain.Palette) {
    text += ' ';
    text += PackedToHexText(colour);
  }
  return text;
}

const char* PlaceName(ChainPlace place) {
  switch (place) {
    case ChainPlace::FirstPlay:
      return "first_play";
    case ChainPlace::Menu:
      return "menu";
    case ChainPlace::Title:
      break;
  }
  return "title";
}

/// The substreams of the streams that the chain has.
Json Substreams(const ProgramChain& chain) {
  Json streams = Json::array();
  for (std::size_t i = 0; i < chain.Subpictures.size(); ++i) {
    if (const SubpictureControl& control = chain.Subpictures[i]; control.IsPresent) {
      streams.push_back({{"stream", i},
                         {"normal", control.Normal},
                         {"wide", control.Wide},
                         {"letterbox", control.Letterbox},
                         {"pan_scan", control.PanScan}});
    }
  }
  return streams;
}

Json RowObject(std::size_t number, const ProgramChain& chain) {
  Json object = {{"number", number},
                 {"what", ChainText(chain)},
                 {"place", PlaceName(chain.Place)},
                 {"title", nullptr},
                 {"language", chain.Language.empty() ? Json() : Json(chain.Language)},
                 {"programs", chain.Programs},
                 {"cells", chain.Cells},
                 {"rgb", Json::array()},
                 {"ycrcb", Json::array()},
                 {"substreams", Substreams(chain)}};
  if (chain.Place == ChainPlace::Title) {
    object["title"] = chain.TitleOrMenu;
  }
  for (std::size_t i = 0; i < chain.Palette.size(); ++i) {
    object["rgb"].push_back(PackedToHexText(chain.Palette[i]));
    object["ycrcb"].push_back(PackedToHexText(chain.Packed[i]));
  }
  return object;
}

}  // namespace

CommandResult LoadChainPalette(const std::string& file, std::int64_t number, DvdPalette& palette) {
  const auto info = ReadIfoFile(PathFromUtf8(file));
  if (!info) {
    return Failed(file, info.Reason());
  }
  if (number > static_cast<std::int64_t>(info->Chains.size())) {
    return WrongUsage(file, Words::Tr("there is no program chain %1: it has %2",
                                      {std::to_string(number), std::to_string(info->Chains.size())}));
  }
  palette = info->Chains[static_cast<std::size_t>(number) - 1].Palette;
  return {};
}

CommandResult Palettes(const PalettesOptions& options, const Console& console) {
  const auto info = ReadIfoFile(PathFromUtf8(options.File));
  if (!info) {
    return Failed(options.File, info.Reason());
  }
  if (options.Json) {
    JsonArrayWriter array(console.Out);
    for (std::size_t i = 0; i < info->Chains.size(); ++i) {
      array.Add(RowObject(i + 1, info->Chains[i]));
    }
  } else {
    for (std::size_t i = 0; i < info->Chains.size(); ++i) {
      console.Out << RowText(i + 1, info->Chains[i]) << '\n';
    }
  }
  for (const std::string& note : info->Notes) {
    console.Warn(options.File, note);
  }
  return {};
}

}  // namespace quillmark::cli
