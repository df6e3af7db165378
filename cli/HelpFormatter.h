#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace quillmark::cli {

/// Help whose usage line has every option that a command cannot do without:
/// "Usage: quillmark-cli salvage [OPTIONS] -o FILE.sup FILE".
class HelpFormatter : public CLI::Formatter {
 public:
  [[nodiscard]] std::string make_usage(const CLI::App* app, std::string name) const override {
    std::string optional;
    std::string required;
    for (const CLI::Option* option : app->get_options(&IsNamed)) {
      if (option->get_required()) {
        required += " " + ShortestName(*option) + " " + option->get_type_name();
      } else {
        optional = " [OPTIONS]";
      }
    }
    std::string usage = "Usage: " + name + optional + required;
    for (const CLI::Option* positional : app->get_options(&CLI::Option::get_positional)) {
      const std::string type = positional->get_type_name();
      usage += " " + (type.empty() ? make_option_usage(positional) : type);
    }
    return usage + (app->get_subcommands({}).empty() ? "\n" : " COMMAND\n");
  }

 private:
  static bool IsNamed(const CLI::Option* option) { return option->nonpositional(); }

  static std::string ShortestName(const CLI::Option& option) {
    return option.get_snames().empty() ? "--" + option.get_lnames().front()
                                       : "-" + option.get_snames().front();
  }
};

}  // namespace quillmark::cli
