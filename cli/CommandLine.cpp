#include "cli/CommandLine.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

#include <CLI/CLI.hpp>

#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/HelpFormatter.h"
#include "cli/Interruption.h"
#include "cli/Json.h"
#include "cli/OptionKinds.h"
#include "cli/ToolCommand.h"
#include "cli/UnknownWord.h"
#include "recipe/OptionText.h"
#include "render/MergedInputReader.h"

namespace quillmark::cli {
namespace {

constexpr const char* Program = "quillmark-cli";

/// Whether the value of a flag turns it on, by the parser's own words for it. No such word is wrong usage,
/// which is told in the form asked for; versions of the parser differ in how they say so.
bool IsOn(const std::string& value) {
  try {
    errno = 0;
    const std::int64_t number = CLI::detail::to_flag_value(value);
    return errno == EINVAL || number > 0;
  } catch (const std::exception&) {
    return true;
  }
}

/// Whether a flag is set, read from the arguments themselves: what the parser could not understand has to be
/// told as JSON as well, and what it requires may depend on the flag. The last one counts.
bool HasFlag(const std::vector<std::string>& arguments, const std::string& flag) {
  const std::string withValue = flag + "=";
  bool wanted = false;
  for (const std::string& argument : arguments) {
    if (argument == "--") {
      break;
    }
    if (argument == flag) {
      wanted = true;
    } else if (argument.starts_with(withValue)) {
      wanted = IsOn(argument.substr(withValue.size()));
    }
  }
  return wanted;
}

/// The program's commands and their options, as the command line sets them.
class CommandTable {
 public:
  CommandTable() {
    app_.name(Program);
    app_.set_version_flag("--version", Program + std::string(" " QUILLMARK_VERSION),
                          Words::Tr("Print the version and exit"));
    app_.set_help_flag("-h,--help", Words::Tr("Print this help message and exit"));
    app_.require_subcommand(0, 1);
    app_.formatter(std::make_shared<HelpFormatter>());
    AddReadingCommands();
    AddDiscCommands();
    AddPictureCommands();
    AddToolCommands();
    AddWritingCommands();
    AddHelp();
  }

  /// What to do after all was understood; throws CLI::ParseError otherwise.
  CommandResult ParseAndRun(std::vector<std::string> arguments, const Console& console) {
    needsOut_ = !HasFlag(arguments, "--dry-run");
    std::ranges::reverse(arguments);  // the order that the parser takes them in
    app_.parse(arguments);
    const auto chosen = app_.get_subcommands();
    if (chosen.empty()) {
      throw CLI::RequiredError(Words::Tr("a command"));
    }
    const auto command = std::ranges::find(commands_, chosen.front(), &Command::App);
    if (!command->Writes) {
      return command->Run(console);
    }
    const InterruptionGuard guard;
    return command->Run(console);
  }

  /// A word that nothing of ours is called, and what it may have been meant to be; empty when all words were
  /// understood as far as the parser came.
  [[nodiscard]] std::string UnknownWord() const {
    const auto chosen = app_.get_subcommands();
    const CLI::App* const command = chosen.empty() ? &app_ : chosen.front();
    for (const CLI::App* app : {command, static_cast<const CLI::App*>(&app_)}) {
      for (const std::string& word : app->remaining()) {
        if (word != "--") {
          return DescribeUnknown(word, *app);
        }
      }
    }
    return "";
  }

  /// Prints help or version where they were asked for.
  void Answer(const CLI::ParseError& error, const Console& console) const {
    (void)app_.exit(error, console.Out, console.Err);
  }

  [[nodiscard]] std::string HelpCommand() const {
    const auto chosen = app_.get_subcommands();
    return Program + std::string(" ") + (chosen.empty() ? "" : chosen.front()->get_name() + " ") + "--help";
  }

 private:
  struct Command {
    const CLI::App* App = nullptr;
    std::function<CommandResult(const Console&)> Run;
    bool Writes = false;  ///< to files, so that an interruption is waited for
    std::function<void()> AddOptions;
  };

  CLI::App* AddCommand(const std::string& name, const std::string& description) {
    return app_.add_subcommand(name, description)->group(Words::Tr("Commands"));
  }

  /// Its options are added when it is the command asked for: those of all commands take longer than many a
  /// command itself.
  template <typename Options>
  void Add(const std::string& name, const std::string& description, Options& options,
           CommandResult (*run)(const Options&, const Console&), bool writes,
           const std::function<void(CLI::App*)>& addOptions) {
    CLI::App* const command = AddCommand(name, description);
    command->preparse_callback([command, addOptions](std::size_t) { addOptions(command); });
    commands_.push_back({.App = command,
                         .Run = [&options, run](const Console& console) { return run(options, console); },
                         .Writes = writes,
                         .AddOptions = [command, addOptions] { addOptions(command); }});
  }

  void AddReadingCommands() {
    Add("report", Words::Tr("Report on a stream, as the window does"), report_, Report, false,
        [this](CLI::App* report) {
          AddStream(report, report_.File, report_.Track);
          report->add_flag("--json", report_.Json, Words::Tr("Write one JSON object"));
        });

    Add("list", Words::Tr("List the subtitles, one a line"), list_, List, false, [this](CLI::App* list) {
      AddStream(list, list_.File, list_.Track);
      list->add_flag("--json", list_.Json, Words::Tr("Write a JSON array of objects"));
    });

    Add("check", Words::Tr("Tell every problem of a stream; exit code 1 if there is one"), check_, Check,
        false, [this](CLI::App* check) {
          AddStream(check, check_.File, check_.Track);
          AddRules(check, check_.Profile, check_.Frame);
          check->add_flag("--json", check_.Json, Words::Tr("Write a JSON array of objects"));
        });

    Add("diff", Words::Tr("Tell what two streams differ in; exit code 1 if they do"), diff_, Diff, false,
        [this](CLI::App* diff) {
          AddFile(diff, diff_.First, "A");
          AddFile(diff, diff_.Second, "B", Words::Tr("Stream to compare it with"));
          AddTrack(diff, diff_.Track, Words::Tr("A's track, by its number or its language"));
          AddTrack(diff, diff_.SecondTrack, Words::Tr("The same of B"), "--second-track");
          diff->add_flag("--json", diff_.Json, Words::Tr("Write a JSON array of objects"));
        });

    Add("tracks", Words::Tr("List the subtitle streams that a file of any kind holds"), tracks_, Tracks,
        false, [this](CLI::App* tracks) {
          AddFile(tracks, tracks_.File, "FILE", Words::Tr(FileKinds));
          tracks->add_flag("--json", tracks_.Json, Words::Tr("Write a JSON array of objects"));
        });
  }

  /// What a stream is held against.
  static void AddRules(CLI::App* command, std::string& profile, int& frame) {
    command->add_option("--profile", profile, Words::Tr("Rules for everybody, or those for players too"))
        ->type_name("spec|player")
        ->check(Accepting([](const std::string& name) { return name == "spec" || name == "player"; },
                          Words::Tr("is neither spec nor player")))
        ->capture_default_str();
    command->add_option("--frame", frame, Words::Tr("Lines of the frame that the stream is for"))
        ->type_name("480|576")
        ->check(FrameLines())
        ->capture_default_str();
  }

  void AddDiscCommands() {
    Add("palettes", Words::Tr("List the program chains of an IFO file with their palettes"), palettes_,
        Palettes, false, [this](CLI::App* palettes) {
          AddFile(palettes, palettes_.File, "FILE", Words::Tr("Information file of a disc (.ifo)"));
          palettes->add_flag("--json", palettes_.Json, Words::Tr("Write a JSON array of objects"));
        });
  }

  static CLI::Option* AddMoment(CLI::App* command, std::int64_t& ticks) {
    return command
        ->add_option_function<std::string>(
            "--at", [&ticks](const std::string& text) { ticks = ParseMilliseconds(text).value_or(ticks); },
            Words::Tr("Milliseconds, with or without decimals, after the subtitle's start; 0 where --player "
                      "is alone"))
        ->type_name("MS")
        ->check(Accepting([](const std::string& text) { return ParseMilliseconds(text).value_or(-1) >= 0; },
                          Words::Tr("is no number of milliseconds from 0 on")));
  }

  void AddPictureCommands() {
    Add("picture", Words::Tr("Save one subtitle's picture as PNG"), picture_, Picture, true,
        [this](CLI::App* picture) {
          AddStream(picture, picture_.File, picture_.Track);
          AddNumber(picture, "N", picture_.Number, std::int64_t{1}, std::int64_t{0x7FFFFFFF},
                    Words::Tr("Number of the subtitle, from 1"))
              ->required()
              ->type_name("");
          AddOut(picture, picture_.Out, "FILE.png",
                 Accepting([](const std::string& name) { return NameEndsIn(name, ".png"); },
                           Words::Tr("does not end in .png")));
          AddPalette(picture, picture_.Palette);
          picture
              ->add_option("--frame", picture_.Frame,
                           Words::Tr("Show the whole frame of 720x480 or 720x576 pixels"))
              ->type_name("480|576")
              ->check(FrameLines());
          picture
              ->add_option(
                  "--background", picture_.Background,
                  Words::Tr(
                      "What the frame is filled with; none without --frame: the subtitle's own picture"))
              ->type_name("checker|none|#RRGGBB|FILE")
              ->check(NamesAFile());
          CLI::Option* const player =
              picture->add_flag("--player", picture_.Player,
                                Words::Tr("As a player shows it, with all control sequences at their times"));
          AddMoment(picture, picture_.At)->needs(player);
        });

    Add("export", Words::Tr("Save all pictures and their list for authoring"), export_, Export, true,
        [this](CLI::App* exporting) {
          AddStream(exporting, export_.File, export_.Track);
          AddPalette(exporting, export_.Palette);
          AddOnly(exporting, export_.Only);
          exporting
              ->add_option(
                  OutNames, export_.Base,
                  Words::Tr(
                      "Write BASE_SubPng/ and BASE_spu.xml; else FILE without its last four characters"))
              ->type_name("BASE")
              ->check(NamesAFile());
        });
  }

  /// The commands that run one tool on one stream.
  void AddToolCommands() {
    for (const Tool& tool : AllTools()) {
      // These have arguments or answers of their own.
      if (tool.Name != "join" && tool.Name != "fix" && tool.Name != "salvage") {
        AddTool(tool);
      }
    }
    Add("join", Words::Tr("Put streams one behind another"), join_, Join, true, [this](CLI::App* join) {
      join->add_option("FILES", join_.Files, Words::Tr("Streams, at least two"))
          ->required()
          ->expected(2, std::numeric_limits<int>::max())
          ->type_name("")
          ->check(NamesAFile());
      join->add_option("--gap", join_.Gap,
                       Words::Tr("How long after a stream's last end the next one starts"))
          ->type_name("MS");
      join->add_option("--at", join_.At,
                       Words::Tr("When each stream but the first starts, [[h:]m:]s, in place of --gap"))
          ->type_name("TIME")
          ->delimiter(',')
          ->expected(1, std::numeric_limits<int>::max());
      AddTrack(join, join_.Track, Words::Tr("Of each file that has several: number or language"));
      AddToolOutput(join, join_.Out, join_.DryRun, join_.Json);
    });

    Add("fix", Words::Tr("Mend what can be mended without coding pictures again"), fix_, Fix, true,
        [this](CLI::App* fix) {
          AddStream(fix, fix_.File, fix_.Track);
          AddRules(fix, fix_.Profile, fix_.Frame);
          AddToolOutput(fix, fix_.Out, fix_.DryRun, fix_.Json);
        });

    Add("apply", Words::Tr("Run the steps of a recipe on any number of streams"), apply_, Apply, true,
        [this](CLI::App* apply) {
          AddFile(apply, apply_.Recipe, "RECIPE", Words::Tr("Recipe (JSON)"));
          apply->add_option("FILES", apply_.Files, Words::Tr(FileKinds))
              ->required()
              ->expected(1, std::numeric_limits<int>::max())
              ->type_name("")
              ->check(NamesAFile());
          AddTrack(apply, apply_.Track, Words::Tr("Of each file that has several: number or language"));
          apply
              ->add_option("--out-dir", apply_.OutFolder,
                           Words::Tr("Folder for the new files, made where it is missing"))
              ->required()
              ->type_name("DIR")
              ->check(NamesAFile());
          apply->add_flag("--force", apply_.Force, Words::Tr("Write over files that exist"));
          apply->add_flag("--dry-run", apply_.DryRun, Words::Tr("Say what would change and write nothing"));
          apply->add_flag("--json", apply_.Json, Words::Tr("Write a JSON array of objects, one a file"));
        });
  }

  void AddTool(const Tool& tool) {
    ToolCommandOptions& options = tools_.emplace_back();
    options.Step.Tool = tool.Name;
    // As ever, it says nothing when all was done.
    options.IsQuiet = tool.Name == "assign";
    Add(std::string(tool.Name), Words::Tr(tool.Help), options, RunTool, true,
        [this, &tool, &options](CLI::App* command) {
          for (const ToolOption& option : tool.Options) {
            AddToolOption(command, option, options.Step);
          }
          AddStream(command, options.File, options.Track);
          AddToolOutput(command, options.Out, options.DryRun, options.Json);
        });
  }

  static void AddToolOption(CLI::App* command, const ToolOption& option, StepText& step) {
    const std::string name(option.Name);
    const std::string help = Words::Tr(option.Help);
    if (option.IsFlag()) {
      command->add_flag_callback(
          "--" + name, [&step, name] { step.Options.emplace_back(name, "true"); }, help);
      return;
    }
    const auto take = [&step, name](const std::string& text) { step.Options.emplace_back(name, text); };
    CLI::Option* const added =
        command->add_option_function<std::string>(option.IsPositional ? name : "--" + name, take, help)
            ->type_name(std::string(option.Value));
    if (option.IsPositional) {
      added->required()->option_text(std::string(option.Value));
    }
  }

  /// Where it goes, or that it goes nowhere.
  void AddToolOutput(CLI::App* command, std::string& out, bool& dryRun, bool& json) {
    AddOut(command, out, "FILE.sup")->required(needsOut_);
    command->add_flag("--dry-run", dryRun, Words::Tr("Say what would change and write nothing; needs no -o"));
    command->add_flag("--json", json, Words::Tr("Write one JSON object"));
  }

  void AddWritingCommands() {
    Add("palette", Words::Tr("Convert a palette file"), palette_, ConvertPalette, true,
        [this](CLI::App* palette) {
          AddFile(palette, palette_.In, "IN", Words::Tr("Palette file: .ifo, .pal or .rgb"));
          AddOut(palette, palette_.Out, "FILE.pal|FILE.RGB",
                 Accepting(
                     [](const std::string& name) {
                       return NameEndsIn(name, ".pal") || NameEndsIn(name, ".rgb");
                     },
                     Words::Tr("does not end in .pal or .rgb")));
          AddNumber(palette, "--chain", palette_.Chain, std::int64_t{1}, std::int64_t{0x7FFFFFFF},
                    Words::Tr("Program chain of an IFO file, as 'palettes' numbers it"))
              ->type_name("N");
        });

    AddConvert();

    AddMerge();

    Add("salvage", Words::Tr("Save the good packets of a damaged stream"), salvage_, Salvage, true,
        [this](CLI::App* salvage) {
          AddStream(salvage, salvage_.File, salvage_.Track);
          AddOut(salvage, salvage_.Out, "FILE.sup");
        });
  }

  void AddMerge() {
    Add("merge", Words::Tr("Lay a second stream over the first"), merge_, Merge, true,
        [this](CLI::App* merge) {
          AddFile(merge, merge_.Primary, "PRIMARY");
          AddFile(merge, merge_.Secondary, "SECONDARY", Words::Tr("Stream to lay over it"));
          AddTrack(merge, merge_.Track, Words::Tr("PRIMARY's track, by its number or its language"));
          AddTrack(merge, merge_.SecondTrack, Words::Tr("The same of SECONDARY"), "--second-track");
          AddOut(merge, merge_.Out, "FILE.sup")->required(needsOut_);
          AddYOffset(merge);
          merge->add_option("--frame", merge_.Frame, Words::Tr("Lines of the frame"))
              ->type_name("480|576")
              ->check(FrameLines())
              ->capture_default_str();
          AddPalette(merge, merge_.Palette);
          merge
              ->add_option(
                  "--secondary-codes", merge_.SecondaryCodes,
                  Words::Tr(
                      "Which code, 0 to 3, each pixel code of SECONDARY becomes: a digit for each, code 0 "
                      "first; a dot leaves a code as it is"))
              ->type_name("HHHH")
              ->check(DigitForEachCode(3, Words::Tr("digits 0 to 3")));
          merge
              ->add_option("--colours", merge_.Colours,
                           Words::Tr("Palette entries of the new stream's codes in the same way, in "
                                     "hexadecimal digits; else "
                                     "PRIMARY's"))
              ->type_name("HHHH")
              ->check(DigitForEachCode(15, Words::Tr("hexadecimal digits")));
          merge
              ->add_option("--opacities", merge_.Opacities,
                           Words::Tr("Opacities in the same way, 0 invisible to F opaque"))
              ->type_name("HHHH")
              ->check(DigitForEachCode(15, Words::Tr("hexadecimal digits")));
          AddMergeMode(merge);
          CLI::Option* const dryRun = merge->add_flag(
              "--dry-run", merge_.DryRun,
              Words::Tr(
                  "Tell what each packet would lose or show otherwise, and write nothing; needs no -o"));
          merge->add_flag("--json", merge_.Json, Words::Tr("Write one JSON object, with --dry-run"))
              ->needs(dryRun);
        });
  }

  void AddMergeMode(CLI::App* merge) {
    merge
        ->add_option_function<std::string>(
            "--mode", [this](const std::string& mode) { merge_.Splits = mode == "split"; },
            Words::Tr("pairs: a packet for each subtitle of PRIMARY; split: packets for whatever is shown at "
                      "a time, "
                      "PRIMARY's alone, both, SECONDARY's alone"))
        ->type_name("pairs|split")
        ->check(Accepting([](const std::string& mode) { return mode == "pairs" || mode == "split"; },
                          Words::Tr("is neither pairs nor split")))
        ->default_str("pairs");
    merge
        ->add_option_function<std::string>(
            "--join",
            [this](const std::string& text) {
              merge_.JoinTicks = ParseMilliseconds(text).value_or(merge_.JoinTicks);
            },
            Words::Tr(
                "With --mode split: close gaps of less than these milliseconds, with or without decimals"))
        ->type_name("MS")
        ->check(Accepting(
            [](const std::string& text) {
              const auto ticks = ParseMilliseconds(text);
              return ticks && *ticks >= 0 && *ticks <= MaxJoin;
            },
            Words::Tr("is no number of milliseconds from 0 to 3600000")))
        ->default_str("0");
  }

  void AddYOffset(CLI::App* merge) {
    const auto take = [this](const std::string& text) {
      merge_.FindsOffset = text == "auto";
      merge_.YOffset = static_cast<int>(ParseDecimal(text).value_or(merge_.YOffset));
    };
    merge
        ->add_option_function<std::string>("--y-offset", take,
                                           Words::Tr("Lines that SECONDARY's pictures are moved down; auto: "
                                                     "so that the fewest pixels are covered or "
                                                     "clipped"))
        ->type_name("LINES|auto")
        ->check(NumberWithinOr("auto", MinYOffset, MaxYOffset))
        ->default_str(std::to_string(merge_.YOffset));
  }

  void AddConvert() {
    Add("convert", Words::Tr("Write streams as another kind of file"), convert_, Convert, true,
        [this](CLI::App* convert) {
          convert->add_option("FILES", convert_.Files, Words::Tr(FileKinds))
              ->required()
              ->expected(1, std::numeric_limits<int>::max())
              ->type_name("")
              ->check(NamesAFile());
          AddOut(convert, convert_.Out, "FILE.sup|.idx|.xml",
                 Accepting(
                     [](const std::string& name) {
                       const bool isEndingAlone = name.size() <= 4 || name[name.size() - 5] == '/';
                       return !isEndingAlone && (NameEndsIn(name, ".sup") || NameEndsIn(name, ".idx") ||
                                                 NameEndsIn(name, ".xml"));
                     },
                     Words::Tr("is no name that ends in .sup, .idx or .xml")));
          AddTrack(convert, convert_.Track,
                   Words::Tr("One of a file's tracks, by its number or its language"));
          convert
              ->add_option(
                  "--language", convert_.Languages,
                  Words::Tr(
                      "Languages of the tracks, of two letters, in their order; else those that they have"))
              ->type_name("L,...")
              ->delimiter(',')
              ->check(Accepting([](const std::string& tag) { return !LanguageCode(tag).empty(); },
                                Words::Tr("is no language such as de, ger or pt-BR")));
          AddPalette(convert, convert_.Palette);
          AddOnly(convert, convert_.Only);
          convert->add_flag("--reduce", convert_.Reduces,
                            Words::Tr("Take colours of a list's pictures together where there are too many"));
          convert
              ->add_option("--frame", convert_.Frame,
                           Words::Tr("Lines of the frame; else those that FILES name, or 576"))
              ->type_name("480|576")
              ->check(FrameLines());
        });
  }

  void AddHelp() {
    CLI::App* help = AddCommand("help", Words::Tr("Print this help, or the help of a command"));
    help->add_option("COMMAND", helpTopic_, Words::Tr("Command to tell of"))->type_name("");
    commands_.push_back({.App = help,
                         .Run = [this](const Console& console) { return Help(console); },
                         .Writes = false,
                         .AddOptions = {}});
  }

  CommandResult Help(const Console& console) const {
    const CLI::App* topic = &app_;
    if (!helpTopic_.empty()) {
      const auto command = std::ranges::find(commands_, helpTopic_,
                                             [](const Command& known) { return known.App->get_name(); });
      if (command == commands_.end()) {
        return WrongUsage("", DescribeUnknown(helpTopic_, app_) + "\n" +
                                  Words::Tr("Try '%1'.", {Program + std::string(" help")}));
      }
      topic = command->App;
      if (command->AddOptions) {
        command->AddOptions();
      }
    }
    const std::string name = topic == &app_ ? Program : Program + (" " + topic->get_name());
    console.Out << app_.get_formatter()->make_help(topic, name, CLI::AppFormatMode::Normal);
    return {};
  }

  CLI::App app_{Words::Tr("View and edit DVD subtitle streams without a window")};
  std::vector<Command> commands_;
  ReportOptions report_;
  ListOptions list_;
  PictureOptions picture_;
  ExportOptions export_;
  PaletteOptions palette_;
  PalettesOptions palettes_;
  MergeOptions merge_;
  CheckOptions check_;
  DiffOptions diff_;
  TracksOptions tracks_;
  ConvertOptions convert_;
  SalvageOptions salvage_;
  std::deque<ToolCommandOptions> tools_;  // that stay where they are when more are added
  bool needsOut_ = true;                  // but for --dry-run
  JoinCommandOptions join_;
  FixOptions fix_;
  ApplyOptions apply_;
  std::string helpTopic_;
};

/// The parser's own words, in those of the user where it is one of its usual complaints.
std::string InUsersWords(const CLI::ParseError& error) {
  struct Complaint {
    std::string_view
        Between;  ///< in the parser's words: what stands before and behind it are names and values
    const char* Text;
  };
  static constexpr std::array Complaints = {
      Complaint{" is required", Words::Mark("%1 is required%2")},
      Complaint{" requires ", Words::Mark("%1 requires %2")},
      Complaint{" excludes ", Words::Mark("%1 excludes %2")},
      Complaint{" required but received ", Words::Mark("%1 required but received %2")},
      Complaint{" required ", Words::Mark("%1 required %2")}};
  const std::string_view text = error.what();
  for (const auto& [between, words] : Complaints) {
    if (const std::size_t at = text.find(between); at != std::string_view::npos) {
      return Words::Tr(words, {text.substr(0, at), text.substr(at + between.size())});
    }
  }
  return std::string(text);
}

CommandResult WrongUsageOf(const CommandTable& table, const CLI::ParseError& error) {
  const std::string unknown = table.UnknownWord();
  return WrongUsage("", (unknown.empty() ? InUsersWords(error) : unknown) + "\n" +
                            Words::Tr("Try '%1'.", {table.HelpCommand()}));
}

/// What is left where a command cannot do its work. Of `diff`, 1 says that the streams differ.
ExitCode TroubleOf(const std::vector<std::string>& arguments) {
  return !arguments.empty() && arguments.front() == "diff" ? ExitCode::WrongUsage : ExitCode::Failed;
}

void Tell(const CommandResult& result, bool asJson, const Console& console) {
  if (result.Reason.empty()) {
    return;
  }
  console.Err << Program << ": " << result.Text() << '\n';
  if (asJson && !result.JsonWritten) {
    WriteJson(console.Out, Json{{"error", result.Text()}});
    console.Out << '\n';
  }
}

}  // namespace

int RunCommandLine(const std::vector<std::string>& arguments, const Console& console) {
  const bool isJson = HasFlag(arguments, "--json");
  if (isJson) {
    InstallTranslator(nullptr);  // what scripts read is the same everywhere
  }
  CommandTable table;
  CommandResult result;
  try {
    result = table.ParseAndRun(arguments, console);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      table.Answer(error, console);
    } else {
      result = WrongUsageOf(table, error);
    }
  } catch (const std::bad_alloc&) {
    result = Failed("", Words::Tr("there is not enough memory"));
  }
  if (result.Code == ExitCode::Failed && !result.Reason.empty()) {
    result.Code = TroubleOf(arguments);
  }
  Tell(result, isJson, console);
  console.Out.flush();
  if (!console.Out) {
    console.Err << Program << ": " << Words::Tr("standard output cannot be written") << '\n';
    return static_cast<int>(TroubleOf(arguments));
  }
  return static_cast<int>(result.Code);
}

}  // namespace quillmark::cli
