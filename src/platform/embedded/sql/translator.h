#pragma once

#include <string>
#include <vector>

#include "platform/embedded/sql/syntax.h"
#include "platform/embedded/sql/translation.h"

namespace orva::sql {

/// An expression on its way to SQLite. A literal stays unwritten until it is
/// known what it is compared with or stored into.
struct Operand {
  std::string sql;
  SqlType type = SqlType::kNull;
  const Expr* literal = nullptr;
  bool negative = false;
  const embedded::ColumnDef* column = nullptr;
  /// The same over unqualified columns, when an index could hold it.
  std::string key;
  /// Reads no row.
  bool constant = false;
};

/// Turns statements of a dialect into SQLite's, with the types of the catalogue.
/// Throws `ProviderError`: kNoSuchTable, kSyntaxOrExists, kNoSuchColumn.
class Translator {
 public:
  Translator(const embedded::Catalogue& catalogue, SqlDialect dialect) : catalogue_(catalogue), dialect_(dialect) {}

  /// `criterion` is the condition of a filter, or null.
  Translation select(const SelectStatement& statement, const Expr* criterion);
  Translation insert(const InsertStatement& statement);
  Translation update(const UpdateStatement& statement);
  Translation deleteRows(const DeleteStatement& statement);

  // For the table of functions.
  Operand translate(const Expr& expr);
  std::string sqlOf(const Operand& operand, SqlType want);
  std::string natural(const Operand& operand) { return sqlOf(operand, SqlType::kNull); }
  SqlType commonType(const std::vector<Operand>& operands) const;
  Operand aggregate(const Expr& expr);
  bool isServer() const { return dialect_ == SqlDialect::kSqlServer; }
  std::string collate() const;
  /// Inside "order by", a text that is no number sorts first instead of failing:
  /// the rows that have none are left out by the conditions of the query, and an
  /// index must be able to hold every row.
  bool isSorting() const { return sorting_; }

 private:
  struct ScopeSource {
    std::string alias;
    const embedded::TableDef* table;
  };
  struct Scope {
    std::vector<ScopeSource> sources;
    const Scope* outer = nullptr;
    const SelectStatement* select = nullptr;
  };
  struct Found {
    const ScopeSource* source = nullptr;
    int column = -1;
    bool outer = false;
  };
  /// What the conditions of a query ask of one table.
  struct Facts {
    std::vector<std::string> equal;
    std::string range;
    bool rangeIsPrefix = false;  ///< texts with one beginning
    std::string order;
    /// A key that differs from a flag, and that condition.
    std::string unequal;
    std::string condition;
  };

  // Names.
  Found findColumn(const Scope& scope, const Expr& column) const;
  Operand column(const Expr& expr);
  [[noreturn]] void failColumn(const Expr& expr) const;
  void addSource(Scope& scope, const TableName& name) const;
  bool reads(const Expr& expr, std::size_t source) const;
  bool isGrouped(const Expr& expr, const SelectStatement& statement) const;

  // Expressions.
  const Expr& withoutCase(const Expr& expr) const;
  Operand literalOperand(const Expr& expr) const;
  Operand negate(const Expr& expr);
  Operand arithmetic(const Expr& expr);
  Operand dateArithmetic(const std::string& op, const Operand& left, const Operand& right);
  Operand moneyArithmetic(const std::string& op, const Operand& left, const Operand& right);
  Operand numberArithmetic(const std::string& op, const Operand& left, const Operand& right);
  Operand compare(const Expr& expr);
  bool prefixTest(const Expr& expr, Operand& result);
  bool flagTest(const Expr& expr, Operand& result);
  Operand junction(const Expr& expr, const char* word);
  Operand isNull(const Expr& expr);
  Operand inList(const Expr& expr);
  Operand between(const Expr& expr);
  Operand like(const Expr& expr);
  Operand caseOf(const Expr& expr);
  Operand subquery(const Expr& expr);
  std::string condition(const Expr& expr);
  std::string comparison(const std::string& op, const Operand& left, const Operand& right);
  std::string bind(const Operand& operand, BindAs as, const embedded::ColumnDef* column = nullptr);
  std::string storedSql(const embedded::ColumnDef& column, const Operand& operand);

  // Queries.
  std::string from(const SelectStatement& statement);
  std::string where(const SelectStatement& statement, const Expr* criterion);
  std::string ordering(const SelectStatement& statement);
  std::string orderKey(const SelectStatement& statement, const Expr& expr);
  std::string grouping(const SelectStatement& statement);
  std::string items(const SelectStatement& statement, std::vector<ResultColumn>& columns);
  void starItems(const SelectItem& item, std::string& sql, std::vector<ResultColumn>& columns);
  std::string selectSql(const SelectStatement& statement, const Expr* criterion, std::vector<ResultColumn>& columns);
  bool asKeyed(const SelectStatement& statement, const Expr* criterion);
  bool keyedColumns(const SelectStatement& statement, const embedded::TableDef& table);
  std::string conjunction(const std::vector<const Expr*>& terms);
  void assume(const Expr& literal);

  // Look-up indexes.
  void note(const std::string& op, const Operand& left, const Operand& right);
  void noteOrder(const SelectStatement& statement);
  void proposeIndex(const embedded::TableDef& table, const Facts& facts);

  // Changes.
  std::string insertColumns(const InsertStatement& statement, std::vector<int>& columns) const;
  std::string insertRest(const std::vector<int>& columns, std::string& names);
  std::size_t updateTarget(const UpdateStatement& statement, const Scope& scope) const;
  std::string updateFrom(const Scope& scope, std::size_t target, std::vector<const Expr*>& terms);
  std::string assignments(const UpdateStatement& statement, const embedded::TableDef& table, std::size_t target);

  const embedded::Catalogue& catalogue_;
  SqlDialect dialect_;
  Translation result_;
  Scope* scope_ = nullptr;
  Facts* facts_ = nullptr;
  bool sorting_ = false;
};

/// True for a name that the dialect takes for a Boolean constant.
bool booleanConstant(std::string_view name, bool& value);

/// The function's translation; throws kSyntaxOrExists for a function that the
/// dialect does not have.
Operand translateFunction(Translator& translator, const Expr& expr);

/// Terms of a condition that must all hold.
void splitTerms(const Expr* expr, std::vector<const Expr*>& terms);

}  // namespace orva::sql
