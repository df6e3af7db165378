#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include <QString>

namespace quillmark {

/// How a dialog asks for one option of a tool.
struct ToolField {
  enum class Kind : std::uint8_t { Text, Flag, Choice, Stream };

  std::string_view Option;  ///< its name in the table of tools
  Kind What = Kind::Text;
  QString Label;    ///< with its mnemonic
  QString Remark;   ///< after the field: a unit, or the form of what is written into it
  QString Initial;  ///< the option's value at first; "true" for a flag that is given
  std::vector<std::pair<QString, QString>> Choices = {};  ///< what is shown, and the option's value
};

/// One of several ways to use a tool, and the options that belong to it.
struct ToolWay {
  QString Label;
  std::vector<std::string_view> Options;
};

/// What a dialog asks for before it runs a tool.
struct ToolForm {
  std::string_view Tool;  ///< its name in the table of tools
  QString Name;           ///< "Retime": what the dialog, its command and the step of the history are called
  QString What;           ///< what the tool does, a sentence
  std::vector<ToolField> Fields = {};
  std::vector<ToolWay> Ways = {};  ///< none: all fields belong to the one way
};

/// Those of all tools that have a dialog, in the order of the menu.
[[nodiscard]] std::vector<ToolForm> ToolForms();
/// Of the tool with that name, which has one.
[[nodiscard]] ToolForm FormOf(std::string_view tool);

}  // namespace quillmark
