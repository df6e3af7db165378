#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "base/Words.h"
#include "cli/NearestMatch.h"

/// What to say of a word on the command line that nothing is called. Parsing CLI11 takes longer than anything
/// else here, so this is a header for the one source that does.
namespace quillmark::cli {

/// The word without dashes in front and a value after.
inline std::string Bare(const std::string& word) {
  const auto start = std::min(word.find_first_not_of('-'), word.size());
  return word.substr(start, word[0] == '-' ? word.find('=') - start : std::string::npos);
}

inline std::string Dashes(const std::string& name, bool isOption) {
  return !isOption ? "" : name.size() == 1 ? "-" : "--";
}

inline std::vector<std::string> OptionNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    names.insert(names.end(), option->get_lnames().begin(), option->get_lnames().end());
    names.insert(names.end(), option->get_snames().begin(), option->get_snames().end());
  }
  return names;
}

inline std::vector<std::string> CommandNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands({})) {
    names.push_back(command->get_name());
  }
  return names;
}

/// "unknown option '--jsno'; did you mean '--json'?"
inline std::string DescribeUnknown(const std::string& word, const CLI::App& app) {
  const bool isOption = word.size() > 1 && word[0] == '-';
  if (!isOption && app.get_parent() != nullptr) {
    return Words::Tr("unexpected argument '%1'", {word});
  }
  const std::string bare = Bare(word);
  const std::string nearest = NearestMatch(bare, isOption ? OptionNames(app) : CommandNames(app));
  const std::string unknown =
      isOption ? Words::Tr("unknown option '%1'", {word}) : Words::Tr("unknown command '%1'", {word});
  return nearest.empty()
             ? unknown
             : unknown + "; " + Words::Tr("did you mean '%1'?", {Dashes(nearest, isOption) + nearest});
}

}  // namespace quillmark::cli
