#pragma once

#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "base/Words.h"

namespace quillmark::cli {

/// Help whose usage line has every option that a command cannot do without:
/// "Usage: quillmark-cli salvage [OPTIONS] -o FILE.sup FILE".
class HelpFormatter : public CLI::Formatter {
 public:
  HelpFormatter() {
    label("Positionals", Words::Tr("Positionals"));
    label("REQUIRED", Words::Tr("REQUIRED"));
    label("Needs", Words::Tr("Needs"));
  }

  [[nodiscard]] std::string make_group(std::string group, bool isPositional,
                                       std::vector<const CLI::Option*> options) const override {
    return CLI::Formatter::make_group(group == "Options" ? Words::Tr("Options") : group, isPositional,
                                      std::move(options));
  }

  [[nodiscard]] std::string make_usage(const CLI::App* app, std::string name) const override {
    std::string optional;
    std::string required;
    for (const CLI::Option* option : app->get_options(&IsNamed)) {
      if (option->get_required()) {
        required += " " + ShortestName(*option) + " " + option->get_type_name();
      } else {
        optional = " " + Words::Tr("[OPTIONS]");
      }
    }
    std::string usage = Words::Tr("Usage: %1", {name}) + optional + required;
    for (const CLI::Option* positional : app->get_options(&CLI::Option::get_positional)) {
      const std::string type = positional->get_type_name();
      usage += " " + (type.empty() ? make_option_usage(positional) : type);
    }
    return usage + (app->get_subcommands({}).empty() ? "\n" : " " + Words::Tr("COMMAND") + "\n");
  }

 private:
  static bool IsNamed(const CLI::Option* option) { return option->nonpositional(); }

  static std::string ShortestName(const CLI::Option& option) {
    return option.get_snames().empty() ? "--" + option.get_lnames().front()
                                       : "-" + option.get_snames().front();
  }
};

}  // namespace quillmark::cli
