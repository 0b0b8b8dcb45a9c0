#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/database.h"

namespace orva {

/// Calls that can be made to fail. `kStore` is a record set's `update`; `kRead` counts
/// every move and requery of a record set.
enum class DatabaseCall { kConnect, kExecute, kOpen, kStore, kRead };

/// When which call fails. Calls are counted from the moment the fault is set; a call that
/// fails does not reach the database.
class FaultPlan {
 public:
  /// The `nth` call of the kind (1 is the next one) fails once.
  void failAt(DatabaseCall call, int nth, std::int32_t number, std::string description = "The provider failed.");
  /// The `nth` call of any kind fails once; 0 takes the fault back.
  void failAtCall(int nth, std::int32_t number, std::string description = "The provider failed.") {
    single_ = {DatabaseCall::kConnect, total_ + nth, number, std::move(description)};
  }
  /// At the `nth` call of any kind the connection is lost: that call and all later ones on
  /// open connections fail; a new connection works again.
  void loseConnectionAt(int nth) { loseAt_ = total_ + nth; }
  /// Every value set in the field `name` is refused.
  void refuseField(std::string name, std::int32_t number, std::string description = "The provider failed.") {
    refusals_.push_back({std::move(name), number, std::move(description)});
  }
  int count(DatabaseCall call) const { return counts_[index(call)]; }

  /// For the adapter: counts one call and throws when it is the one to fail.
  void pass(DatabaseCall call, bool& connectionLost);
  /// For the adapter: throws when the field is refused.
  void passField(std::string_view name) const;

 private:
  struct Fault {
    DatabaseCall call;
    int at;
    std::int32_t number;
    std::string description;
  };
  struct Refusal {
    std::string field;
    std::int32_t number;
    std::string description;
  };
  static std::size_t index(DatabaseCall call) { return static_cast<std::size_t>(call); }

  std::array<int, 5> counts_{};
  int total_ = 0;
  int loseAt_ = -1;
  std::vector<Fault> faults_;
  std::vector<Refusal> refusals_;
  /// Counted over all kinds.
  Fault single_{DatabaseCall::kConnect, -1, 0, {}};
};

/// Any adapter with faults on plan.
class FaultyAdapter : public DatabaseAdapter {
 public:
  explicit FaultyAdapter(std::shared_ptr<DatabaseAdapter> inner) : inner_(std::move(inner)) {}

  std::unique_ptr<Connection> connect(const ConnectionClauses& clauses, CursorLocation location) override;
  void create(const ConnectionClauses& clauses) override { inner_->create(clauses); }
  std::vector<std::string> companionFiles(const std::string& databaseFile) const override {
    return inner_->companionFiles(databaseFile);
  }

  FaultPlan& plan() { return *plan_; }

 private:
  std::shared_ptr<DatabaseAdapter> inner_;
  std::shared_ptr<FaultPlan> plan_ = std::make_shared<FaultPlan>();
};

}  // namespace orva
