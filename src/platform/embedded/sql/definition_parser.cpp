#include <charconv>

#include "platform/embedded/sql/parser.h"

namespace orva::sql {

Statement Parser::create() {
  if (acceptWord("table")) return createTable();
  const bool unique = acceptWord("unique");
  expectWord("index");
  return createIndex(unique);
}

Statement Parser::createTable() {
  CreateTable result;
  result.table = name();
  expectSymbol("(");
  do {
    if (startsKey()) {
      result.keys.push_back(keySpec());
    } else {
      result.columns.push_back(columnSpec());
    }
  } while (acceptSymbol(","));
  expectSymbol(")");
  return result;
}

Statement Parser::createIndex(bool unique) {
  CreateIndex result;
  result.unique = unique;
  result.index.name = name();
  expectWord("on");
  result.table = name();
  result.index.columns = nameList();
  if (acceptWord("with")) {
    if (acceptWord("primary")) {
      result.index.primary = true;
    } else if (acceptWord("disallow") || acceptWord("ignore")) {
      expectWord("null");
    } else {
      fail();
    }
  }
  return result;
}

Statement Parser::alter() {
  expectWord("table");
  std::string table = name();
  if (acceptWord("add")) return addTo(std::move(table));
  if (acceptWord("drop")) return dropFrom(std::move(table));
  expectWord("alter");
  acceptWord("column");
  return AlterColumn{std::move(table), columnSpec()};
}

Statement Parser::addTo(std::string table) {
  if (startsKey()) return AddKey{std::move(table), keySpec()};
  AddColumns result;
  result.table = std::move(table);
  const bool named = isWord("column") && peek(2).kind == TokenKind::kWord;
  if (named) ++at_;
  do {
    if (named && isWord("column") && peek(2).kind == TokenKind::kWord) ++at_;
    result.columns.push_back(columnSpec());
  } while (acceptSymbol(","));
  return result;
}

Statement Parser::dropFrom(std::string table) {
  if (acceptWord("constraint")) return DropIndex{std::move(table), name()};
  DropColumns result;
  result.table = std::move(table);
  do {
    if (isWord("column") && peek(1).kind != TokenKind::kEnd && !isSymbol(",", 1)) ++at_;
    result.columns.push_back(name());
  } while (acceptSymbol(","));
  return result;
}

Statement Parser::drop() {
  if (acceptWord("table")) return DropTable{name()};
  expectWord("index");
  std::string first = name();
  if (acceptSymbol(".")) return DropIndex{std::move(first), name()};
  expectWord("on");
  return DropIndex{name(), std::move(first)};
}

ColumnSpec Parser::columnSpec() {
  ColumnSpec column;
  column.name = name();
  column.typeName = name();
  typeSize(column);
  while (columnOption(column)) {
  }
  return column;
}

void Parser::typeSize(ColumnSpec& column) {
  if (!acceptSymbol("(")) return;
  const Token size = peek();
  int value = 0;
  if (size.kind != TokenKind::kNumber) fail();
  const auto parsed = std::from_chars(size.text.data(), size.text.data() + size.text.size(), value);
  if (parsed.ec != std::errc() || parsed.ptr != size.text.data() + size.text.size() || value < 1) fail();
  ++at_;
  column.size = value;
  if (acceptSymbol(",")) {
    if (peek().kind != TokenKind::kNumber) fail();
    ++at_;
  }
  expectSymbol(")");
}

bool Parser::columnOption(ColumnSpec& column) {
  if (isWord("not") && isWord("null", 1)) {
    at_ += 2;
    column.required = true;
    return true;
  }
  if (acceptWord("null")) {
    column.required = false;
    return true;
  }
  if (acceptWord("default")) {
    defaultOf(column);
    return true;
  }
  if (acceptWord("constraint")) {
    column.constraintName = name();
    return true;
  }
  if (isWord("primary") && isWord("key", 1)) {
    at_ += 2;
    column.primary = true;
    return true;
  }
  column.unique = column.unique || isWord("unique");
  return acceptWord("unique");
}

void Parser::defaultOf(ColumnSpec& column) {
  const bool parenthesis = acceptSymbol("(");
  column.defaultNegative = acceptSymbol("-");
  const Token& token = peek();
  if (!token.isLiteral() && token.kind != TokenKind::kWord) fail();
  if (column.defaultNegative && token.kind != TokenKind::kNumber) fail();
  column.defaultToken = token;
  ++at_;
  if (parenthesis) expectSymbol(")");
}

bool Parser::startsKey() const {
  return isWord("constraint") || (isWord("primary") && isWord("key", 1)) || (isWord("unique") && isSymbol("(", 1));
}

KeySpec Parser::keySpec() {
  KeySpec key;
  if (acceptWord("constraint")) key.name = name();
  key.primary = acceptWord("primary");
  if (key.primary) {
    expectWord("key");
  } else {
    expectWord("unique");
  }
  if (!acceptWord("clustered")) acceptWord("nonclustered");
  key.columns = nameList();
  return key;
}

}  // namespace orva::sql
