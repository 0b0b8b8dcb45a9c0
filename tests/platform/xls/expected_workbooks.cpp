#include "platform/xls/expected_workbooks.h"

#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>

namespace orva::xls {
namespace {

/// Just the JSON that the file uses: texts, whole numbers, lists, objects.
struct Json {
  std::string text;
  std::vector<Json> items;
  std::map<std::string, Json> members;
};

class JsonReader {
 public:
  explicit JsonReader(const std::string& text) : text_(text) {}

  Json value() {
    Json json;
    switch (peek()) {
      case '{':
        list('}', [&] {
          const std::string name = string();
          expect(':');
          json.members[name] = value();
        });
        break;
      case '[':
        list(']', [&] { json.items.push_back(value()); });
        break;
      case '"':
        json.text = string();
        break;
      default:
        while (at_ < text_.size() && std::string_view("-0123456789").find(text_[at_]) != std::string_view::npos) {
          json.text += text_[at_++];
        }
        if (json.text.empty()) throw std::runtime_error("unexpected character in the list of expected cells");
    }
    return json;
  }

 private:
  char peek() {
    while (at_ < text_.size() && std::string_view(" \n\r\t").find(text_[at_]) != std::string_view::npos) ++at_;
    return text_.at(at_);
  }
  void expect(char letter) {
    if (peek() != letter) throw std::runtime_error(std::string("expected ") + letter);
    ++at_;
  }
  template <typename Item>
  void list(char end, Item item) {
    ++at_;
    while (peek() != end) {
      item();
      if (peek() == ',') ++at_;
    }
    ++at_;
  }
  std::string string() {
    expect('"');
    std::string out;
    while (text_.at(at_) != '"') out += text_[at_] == '\\' ? escape() : text_[at_++];
    ++at_;
    return out;
  }
  char escape() {
    const char letter = text_.at(at_ + 1);
    at_ += 2;
    switch (letter) {
      case 'n':
        return '\n';
      case 't':
        return '\t';
      case 'r':
        return '\r';
      case 'u':
        throw std::runtime_error("the list of expected cells is plain UTF-8");
      default:
        return letter;
    }
  }

  const std::string& text_;
  std::size_t at_ = 0;
};

}  // namespace

std::string fixture(const std::string& name) { return std::string(ORVA_FIXTURES) + "/xls/" + name; }

std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error(path + " is missing");
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<ExpectedWorkbook> expectedWorkbooks() {
  const std::string text = contentOf(fixture("expected.json"));
  std::vector<ExpectedWorkbook> workbooks;
  for (auto& [file, json] : JsonReader(text).value().members) {
    ExpectedWorkbook workbook{.file = file, .refused = json.members["refused"].text, .sheets = {}, .cells = {}};
    for (const Json& sheet : json.members["sheets"].items) workbook.sheets.push_back(sheet.text);
    for (const Json& cell : json.members["cells"].items) {
      workbook.cells.push_back({cell.items.at(0).text, std::stoi(cell.items.at(1).text),
                                std::stoi(cell.items.at(2).text), cell.items.at(3).text.at(0), cell.items.at(4).text});
    }
    workbooks.push_back(std::move(workbook));
  }
  return workbooks;
}

}  // namespace orva::xls
