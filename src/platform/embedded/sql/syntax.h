#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/embedded/sql/tokens.h"

namespace orva::sql {

struct SelectStatement;

enum class ExprKind {
  kLiteral,
  kNull,
  kColumn,
  kNot,
  kNegate,
  kArithmetic,
  kCompare,
  kAnd,
  kOr,
  kIsNull,
  kIn,
  kBetween,
  kLike,
  kFunction,
  kCase,
  kSubquery,
  kExists
};

struct Expr;
using ExprPtr = std::unique_ptr<Expr>;

/// One node of an expression.
struct Expr {
  ExprKind kind = ExprKind::kNull;
  std::string name;       ///< column, function (lower case) or operator
  std::string qualifier;  ///< table of a column; type name of a conversion
  int literal = -1;       ///< ordinal among the literals of the statement
  Token token;            ///< the literal itself
  bool negated = false;   ///< not in, not between, not like, is not null
  bool distinct = false;  ///< count(distinct x)
  bool star = false;      ///< count(*)
  std::vector<ExprPtr> args;
  std::unique_ptr<SelectStatement> select;

  Expr();
  explicit Expr(ExprKind k);
  ~Expr();
};

struct TableName {
  std::string name;
  std::string alias;  ///< the name itself when no alias is given
};

enum class JoinKind { kComma, kInner, kLeft, kRight };

struct Source {
  TableName table;
  JoinKind join = JoinKind::kComma;
  ExprPtr on;
};

struct SelectItem {
  bool star = false;
  std::string starQualifier;
  ExprPtr expr;
  std::string alias;
};

struct OrderItem {
  ExprPtr expr;
  bool descending = false;
};

struct SelectStatement {
  bool distinct = false;
  int topLiteral = -1;
  Token top;
  std::vector<SelectItem> items;
  std::vector<Source> sources;
  ExprPtr where;
  std::vector<ExprPtr> groupBy;
  ExprPtr having;
  std::vector<OrderItem> orderBy;
};

struct InsertStatement {
  std::string table;
  std::vector<std::string> columns;
  std::vector<ExprPtr> values;
  std::unique_ptr<SelectStatement> select;
};

struct Assignment {
  std::string qualifier;
  std::string column;
  ExprPtr value;
};

/// The target is the table that the assignments name; `sources` are the tables
/// beside it, `where` holds the join conditions as well.
struct UpdateStatement {
  std::vector<Source> tables;  ///< after "update"
  std::vector<Source> from;    ///< after "from"
  std::vector<Assignment> assignments;
  ExprPtr where;
};

struct DeleteStatement {
  std::string table;
  ExprPtr where;
};

struct ColumnSpec {
  std::string name;
  std::string typeName;
  std::optional<int> size;
  std::optional<bool> required;
  std::optional<Token> defaultToken;
  bool defaultNegative = false;
  bool primary = false;
  bool unique = false;
  std::string constraintName;
};

struct KeySpec {
  std::string name;
  std::vector<std::string> columns;
  bool primary = false;
};

struct CreateTable {
  std::string table;
  std::vector<ColumnSpec> columns;
  std::vector<KeySpec> keys;
};

struct AddColumns {
  std::string table;
  std::vector<ColumnSpec> columns;
};

struct AddKey {
  std::string table;
  KeySpec key;
};

struct AlterColumn {
  std::string table;
  ColumnSpec column;
};

struct DropColumns {
  std::string table;
  std::vector<std::string> columns;
};

struct DropTable {
  std::string table;
};

struct CreateIndex {
  std::string table;
  KeySpec index;
  bool unique = false;
};

/// Also drops a constraint: a key is an index of the same name.
struct DropIndex {
  std::string table;
  std::string index;
};

using Statement = std::variant<SelectStatement, InsertStatement, UpdateStatement, DeleteStatement, CreateTable,
                               AddColumns, AddKey, AlterColumn, DropColumns, DropTable, CreateIndex, DropIndex>;

}  // namespace orva::sql
