#include "cli/CommandLine.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/Commands.h"
#include "cli/Decimal.h"
#include "cli/HelpFormatter.h"
#include "cli/Interruption.h"
#include "cli/Json.h"
#include "cli/NearestMatch.h"

namespace quillmark::cli {
namespace {

constexpr const char* Program = "quillmark-cli";
/// One option with one meaning in every command that writes; the first long name is the one in messages.
constexpr const char* OutNames = "-o,--out,--output";

/// Four hexadecimal digits, code 0 first; a code with a dot keeps what it has.
std::optional<ChosenNibbles> ParseNibbles(const std::string& text) {
  ChosenNibbles nibbles{};
  if (text.size() != nibbles.size()) {
    return std::nullopt;
  }
  for (std::size_t code = 0; code < nibbles.size(); ++code) {
    if (text[code] == '.') {
      continue;
    }
    const auto digit = std::string_view("0123456789ABCDEFabcdef").find(text[code]);
    if (digit == std::string_view::npos) {
      return std::nullopt;
    }
    nibbles[code] = static_cast<std::uint8_t>(digit < 16 ? digit : digit - 6);
  }
  return nibbles;
}

bool EndsIn(const std::string& name, const std::string& extension) {
  return name.size() >= extension.size() &&
         CLI::detail::to_lower(name.substr(name.size() - extension.size())) == extension;
}

/// Refuses an option's text with `reason` unless `accepts` it.
CLI::Validator Accepting(const std::function<bool(const std::string&)>& accepts, const std::string& reason) {
  return CLI::Validator(
      [=](const std::string& text) { return accepts(text) ? std::string() : "'" + text + "' " + reason; },
      "");
}

CLI::Validator FrameLines() {
  return Accepting([](const std::string& text) { return text == "480" || text == "576"; },
                   "is neither 480 nor 576");
}

CLI::Validator NamesAFile() {
  return Accepting([](const std::string& name) { return !name.empty(); }, "names no file");
}

/// Decimal numbers alone: the parser's own conversion would take 0x10, and 010 for 8.
CLI::Validator NumberWithin(std::int64_t first, std::int64_t last) {
  const auto check = [=](const std::string& text) -> std::string {
    const auto number = ParseDecimal(text);
    if (!number) {
      return "'" + text + "' is no decimal number";
    }
    return *number >= first && *number <= last
               ? ""
               : "Value " + text + " not in range " + std::to_string(first) + " to " + std::to_string(last);
  };
  return CLI::Validator(check, "");
}

/// The program's commands and their options, as the command line sets them.
class CommandTable {
 public:
  CommandTable() {
    app_.name(Program);
    app_.set_version_flag("--version", Program + std::string(" " QUILLMARK_VERSION),
                          "Print the version and exit");
    app_.require_subcommand(0, 1);
    app_.formatter(std::make_shared<HelpFormatter>());
    AddReadingCommands();
    AddPictureCommands();
    AddWritingCommands();
    AddHelp();
  }

  /// What to do after all was understood; throws CLI::ParseError otherwise.
  CommandResult ParseAndRun(std::vector<std::string> arguments, const Console& console) {
    std::ranges::reverse(arguments);  // the order that the parser takes them in
    app_.parse(arguments);
    const auto chosen = app_.get_subcommands();
    if (chosen.empty()) {
      throw CLI::RequiredError("a command");
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
          return Describe(word, *app);
        }
      }
    }
    return "";
  }

  /// Prints help or version where they were asked for; the exit code.
  int Exit(const CLI::ParseError& error, const Console& console) const {
    return app_.exit(error, console.Out, console.Err);
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
  };

  CLI::App* AddCommand(const std::string& name, const std::string& description) {
    return app_.add_subcommand(name, description)->group("Commands");
  }

  template <typename Options>
  CLI::App* Add(const std::string& name, const std::string& description, Options& options,
                CommandResult (*run)(const Options&, const Console&), bool writes) {
    CLI::App* const command = AddCommand(name, description);
    commands_.push_back({.App = command,
                         .Run = [&options, run](const Console& console) { return run(options, console); },
                         .Writes = writes});
    return command;
  }

  static void AddFile(CLI::App* command, std::string& file, const std::string& name = "FILE",
                      const std::string& description = "Subtitle stream (SUP file)") {
    command->add_option(name, file, description)->required()->type_name("")->check(NamesAFile());
  }

  template <typename Number>
  static CLI::Option* AddNumber(CLI::App* command, const std::string& name, Number& number, Number first,
                                Number last, const std::string& description) {
    const auto take = [&number](const std::string& text) {
      number = static_cast<Number>(ParseDecimal(text).value_or(number));
    };
    return command->add_option_function<std::string>(name, take, description)
        ->check(NumberWithin(first, last));
  }

  static void AddOut(CLI::App* command, std::string& out, const std::string& type,
                     const CLI::Validator& check = CLI::Validator()) {
    command->add_option(OutNames, out, "File to write; takes the place of one that exists")
        ->required()
        ->type_name(type)
        ->check(NamesAFile())
        ->check(check);
  }

  static void AddPalette(CLI::App* command, std::string& palette) {
    command->add_option("--palette", palette, "Palette file: .ifo, .pal or .rgb; else the start-up palette")
        ->type_name("FILE")
        ->check(NamesAFile());
  }

  static void AddOnly(CLI::App* command, SubtitleRange& only) {
    command
        ->add_option_function<std::string>(
            "--only", [&only](const std::string& text) { only = ParseSubtitleRange(text).value_or(only); },
            "Subtitles A to B, counted from 1; also A alone, and A- for all from A on")
        ->type_name("A-B")
        ->check(Accepting([](const std::string& text) { return ParseSubtitleRange(text).has_value(); },
                          "is no range such as 3-7, 3 or 3-"));
  }

  static void AddNibbles(CLI::App* command, const std::string& name, std::optional<ChosenNibbles>& nibbles,
                         const std::string& description) {
    command
        ->add_option_function<std::string>(
            name, [&nibbles](const std::string& text) { nibbles = ParseNibbles(text); }, description)
        ->type_name("HHHH")
        ->check(Accepting([](const std::string& text) { return ParseNibbles(text).has_value(); },
                          "is not four hexadecimal digits or dots"));
  }

  void AddReadingCommands() {
    CLI::App* report = Add("report", "Report on a stream, as the window does", report_, Report, false);
    AddFile(report, report_.File);
    report->add_flag("--json", report_.Json, "Write one JSON object");

    CLI::App* list = Add("list", "List the subtitles, one a line", list_, List, false);
    AddFile(list, list_.File);
    list->add_flag("--json", list_.Json, "Write a JSON array of objects");

    CLI::App* check =
        Add("check", "Tell every problem of a stream; exit code 1 if there is one", check_, Check, false);
    AddFile(check, check_.File);
    check->add_flag("--json", check_.Json, "Write a JSON array of objects");

    CLI::App* diff =
        Add("diff", "Tell what two streams differ in; exit code 1 if they do", diff_, Diff, false);
    AddFile(diff, diff_.First, "A");
    AddFile(diff, diff_.Second, "B", "Stream to compare it with");
    diff->add_flag("--json", diff_.Json, "Write a JSON array of objects");
  }

  void AddPictureCommands() {
    CLI::App* picture = Add("picture", "Save one subtitle's picture as PNG", picture_, Picture, true);
    AddFile(picture, picture_.File);
    AddNumber(picture, "N", picture_.Number, std::int64_t{1}, std::int64_t{0x7FFFFFFF},
              "Number of the subtitle, from 1")
        ->required()
        ->type_name("");
    AddOut(picture, picture_.Out, "FILE.png",
           Accepting([](const std::string& name) { return EndsIn(name, ".png"); }, "does not end in .png"));
    AddPalette(picture, picture_.Palette);
    picture->add_option("--frame", picture_.Frame, "Show the whole frame of 720x480 or 720x576 pixels")
        ->type_name("480|576")
        ->check(FrameLines());
    picture
        ->add_option("--background", picture_.Background,
                     "What the frame is filled with; none without --frame: the subtitle's own picture")
        ->type_name("checker|none|FILE")
        ->check(NamesAFile());

    CLI::App* exporting =
        Add("export", "Save all pictures and their list for authoring", export_, Export, true);
    AddFile(exporting, export_.File);
    AddPalette(exporting, export_.Palette);
    AddOnly(exporting, export_.Only);
    exporting
        ->add_option(OutNames, export_.Base,
                     "Write BASE_SubPng/ and BASE_spu.xml; else FILE without its last four characters")
        ->type_name("BASE")
        ->check(NamesAFile());
  }

  void AddWritingCommands() {
    CLI::App* assign =
        Add("assign", "Write other --colours, --opacities or both into the stream", assign_, Assign, true);
    AddFile(assign, assign_.File);
    AddNibbles(
        assign, "--colours", assign_.Colours,
        "Palette entries, a hexadecimal digit for each pixel code: 0 background, 1 pattern, 2 emphasis 1, "
        "3 emphasis 2; a dot leaves a code as it is");
    AddNibbles(assign, "--opacities", assign_.Opacities,
               "Opacities in the same way, 0 invisible to F opaque");
    AddOnly(assign, assign_.Only);
    AddOut(assign, assign_.Out, "FILE.sup");

    CLI::App* palette = Add("palette", "Convert a palette file", palette_, ConvertPalette, true);
    AddFile(palette, palette_.In, "IN", "Palette file: .ifo, .pal or .rgb");
    AddOut(palette, palette_.Out, "FILE.pal|FILE.RGB",
           Accepting([](const std::string& name) { return EndsIn(name, ".pal") || EndsIn(name, ".rgb"); },
                     "does not end in .pal or .rgb"));

    CLI::App* merge = Add("merge", "Lay a second stream over the first", merge_, Merge, true);
    AddFile(merge, merge_.Primary, "PRIMARY");
    AddFile(merge, merge_.Secondary, "SECONDARY", "Stream to lay over it");
    AddOut(merge, merge_.Out, "FILE.sup");
    AddNumber(merge, "--y-offset", merge_.YOffset, -32768, 32767,
              "Lines that SECONDARY's pictures are moved down")
        ->type_name("LINES")
        ->default_str(std::to_string(merge_.YOffset));
    merge->add_option("--frame", merge_.Frame, "Lines of the frame")
        ->type_name("480|576")
        ->check(FrameLines())
        ->capture_default_str();
    AddPalette(merge, merge_.Palette);

    CLI::App* salvage = Add("salvage", "Save the good packets of a damaged stream", salvage_, Salvage, true);
    AddFile(salvage, salvage_.File);
    AddOut(salvage, salvage_.Out, "FILE.sup");
  }

  void AddHelp() {
    CLI::App* help = AddCommand("help", "Print this help, or the help of a command");
    help->add_option("COMMAND", helpTopic_, "Command to tell of")->type_name("");
    commands_.push_back({.App = help, .Run = [this](const Console& console) { return Help(console); }});
  }

  CommandResult Help(const Console& console) const {
    const CLI::App* topic = &app_;
    if (!helpTopic_.empty()) {
      const auto command = std::ranges::find(commands_, helpTopic_,
                                             [](const Command& known) { return known.App->get_name(); });
      if (command == commands_.end()) {
        return WrongUsage("", Describe(helpTopic_, app_) + "\nTry '" + Program + " help'.");
      }
      topic = command->App;
    }
    const std::string name = topic == &app_ ? Program : Program + (" " + topic->get_name());
    console.Out << app_.get_formatter()->make_help(topic, name, CLI::AppFormatMode::Normal);
    return {};
  }

  /// "unknown option '--jsno'; did you mean '--json'?"
  static std::string Describe(const std::string& word, const CLI::App& app) {
    const bool isOption = word.size() > 1 && word[0] == '-';
    if (!isOption && app.get_parent() != nullptr) {
      return "unexpected argument '" + word + "'";
    }
    const std::string bare = Bare(word);
    const std::string nearest = NearestMatch(bare, isOption ? OptionNames(app) : CommandNames(app));
    return (isOption ? "unknown option '" : "unknown command '") + word + "'" +
           (nearest.empty() ? "" : "; did you mean '" + Dashes(nearest, isOption) + nearest + "'?");
  }

  /// The word without dashes in front and a value after.
  static std::string Bare(const std::string& word) {
    const auto start = std::min(word.find_first_not_of('-'), word.size());
    return word.substr(start, word[0] == '-' ? word.find('=') - start : std::string::npos);
  }

  static std::string Dashes(const std::string& name, bool isOption) {
    return !isOption ? "" : name.size() == 1 ? "-" : "--";
  }

  static std::vector<std::string> OptionNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
      names.insert(names.end(), option->get_lnames().begin(), option->get_lnames().end());
      names.insert(names.end(), option->get_snames().begin(), option->get_snames().end());
    }
    return names;
  }

  static std::vector<std::string> CommandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands({})) {
      names.push_back(command->get_name());
    }
    return names;
  }

  CLI::App app_{"View and edit DVD subtitle streams without a window"};
  std::vector<Command> commands_;
  ReportOptions report_;
  ListOptions list_;
  PictureOptions picture_;
  ExportOptions export_;
  AssignOptions assign_;
  PaletteOptions palette_;
  MergeOptions merge_;
  CheckOptions check_;
  DiffOptions diff_;
  SalvageOptions salvage_;
  std::string helpTopic_;
};

/// Whether the value of a flag turns it on, by the parser's own words for it.
bool IsOn(const std::string& value) {
  try {
    return CLI::detail::to_flag_value(value) > 0;
  } catch (const std::exception&) {
    return true;  // no such word: wrong usage, which is told in the form asked for
  }
}

/// Whether a failure is told as JSON too. Read from the arguments themselves, because what the parser could
/// not understand has to be told so as well. The last one counts.
bool WantsJson(const std::vector<std::string>& arguments) {
  constexpr std::string_view WithValue = "--json=";
  bool wanted = false;
  for (const std::string& argument : arguments) {
    if (argument == "--") {
      break;
    }
    if (argument == "--json") {
      wanted = true;
    } else if (argument.starts_with(WithValue)) {
      wanted = IsOn(argument.substr(WithValue.size()));
    }
  }
  return wanted;
}

CommandResult WrongUsageOf(const CommandTable& table, const CLI::ParseError& error) {
  const std::string unknown = table.UnknownWord();
  return WrongUsage("", (unknown.empty() ? error.what() : unknown) + "\nTry '" + table.HelpCommand() + "'.");
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
  CommandTable table;
  CommandResult result;
  try {
    result = table.ParseAndRun(arguments, console);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      return table.Exit(error, console);
    }
    result = WrongUsageOf(table, error);
  } catch (const std::bad_alloc&) {
    result = Failed("", "there is not enough memory");
  }
  Tell(result, WantsJson(arguments), console);
  console.Out.flush();
  if (!console.Out) {
    console.Err << Program << ": standard output cannot be written\n";
    return static_cast<int>(ExitCode::Failed);
  }
  return static_cast<int>(result.Code);
}

}  // namespace quillmark::cli
