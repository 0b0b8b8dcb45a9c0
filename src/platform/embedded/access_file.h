#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/access/access_database.h"
#include "platform/embedded/catalogue.h"
#include "platform/embedded/memory_lookup.h"

namespace orva::embedded {

/// A user's table of an open Access file as the engine sees it, in one layout: a
/// change of the table's definition makes another object and marks this one as old.
struct AccessTable {
  access::Table* table = nullptr;
  TableDef layout;
  std::vector<std::size_t> positions;  ///< place in the file's definition of each column of the layout
  bool isCurrent = true;
  std::uint64_t changes = 0;  ///< of its rows and its layout so far
  std::vector<std::unique_ptr<MemoryLookup>> lookups;
  std::vector<std::vector<LookupPart>> wanted;  ///< look-ups that the planner may choose; built at their first use
  std::vector<LookupPart> expressions;          ///< those that stand behind a hidden column
};

/// An Access file that is open in this program, shared by all its connections:
/// the format knows one writer only. All of them belong to one thread.
class AccessFile final : public access::RowObserver {
 public:
  /// The file as it is open already, or opens it. Throws kUnspecified, kLoginFailed.
  static std::shared_ptr<AccessFile> open(const std::string& path, const std::string& password);
  /// Makes a new file with a password; throws when it exists.
  static void create(const std::string& path, const std::string& password);
  ~AccessFile() override = default;

  access::AccessDatabase& database() { return *database_; }
  /// Grows with every change of the layout.
  std::uint64_t generation() const { return generation_; }
  const std::vector<std::shared_ptr<AccessTable>>& tables() const { return tables_; }

  void commit();
  void rollback();
  /// Reads the definition of a table anew after it was made, changed or dropped,
  /// or after a change of it failed.
  void reloadTable(const std::string& name);

  /// The look-up with these parts, which is built when there is none yet.
  MemoryLookup& lookup(AccessTable& table, const std::vector<LookupPart>& parts);
  Evaluator& evaluator() { return evaluator_; }

  void rowChanging(const access::Table& table, access::RowId row, const std::vector<access::Change>* changes) override;
  void rowChanged(const access::Table& table, access::RowId row, const std::vector<access::Change>* changes) override;

 private:
  /// A change of a look-up that takes effect when the statement is finished.
  struct Pending {
    MemoryLookup* lookup;
    std::string entry;
    bool isNew;
  };

  explicit AccessFile(std::unique_ptr<access::AccessDatabase> database);
  std::shared_ptr<AccessTable> load(const std::string& name);
  void note(const access::Table& table, access::RowId row, const std::vector<access::Change>* changes, bool isNew);

  Evaluator evaluator_;
  std::unique_ptr<access::AccessDatabase> database_;
  std::vector<std::shared_ptr<AccessTable>> tables_;
  std::uint64_t generation_ = 1;
  std::vector<Pending> pending_;
};

}  // namespace orva::embedded
