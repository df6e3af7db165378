#pragma once

#include <ostream>
#include <string>

#include <nlohmann/json.hpp>

namespace quillmark::cli {

/// Keeps its members in the order in which they are set.
using Json = nlohmann::ordered_json;

/// One line. Texts that are not UTF-8, such as odd file names, get replacement characters.
inline std::string JsonText(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}
inline void WriteJson(std::ostream& out, const Json& value) {
  out << JsonText(value);
}

/// Writes an array element by element, one a line, so that none but the current one is held.
class JsonArrayWriter {
 public:
  explicit JsonArrayWriter(std::ostream& out) : out_(out) { out_ << '['; }
  ~JsonArrayWriter() { out_ << (empty_ ? "]\n" : "\n]\n"); }
  JsonArrayWriter(const JsonArrayWriter&) = delete;
  JsonArrayWriter& operator=(const JsonArrayWriter&) = delete;

  void Add(const Json& element) {
    out_ << (empty_ ? "\n" : ",\n");
    WriteJson(out_, element);
    empty_ = false;
  }

 private:
  std::ostream& out_;
  bool empty_ = true;
};

}  // namespace quillmark::cli
