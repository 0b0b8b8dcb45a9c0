#include "fakes/faulty_adapter.h"

#include "platform/values/text.h"

namespace orva {
namespace {

/// What a connection and its record sets share.
struct Line {
  std::shared_ptr<FaultPlan> plan;
  bool lost = false;
  void pass(DatabaseCall call) { plan->pass(call, lost); }
};

class FaultyRecordset : public Recordset {
 public:
  FaultyRecordset(std::unique_ptr<Recordset> inner, std::shared_ptr<Line> line)
      : inner_(std::move(inner)), line_(std::move(line)) {}

  bool eof() override { return inner_->eof(); }
  std::int64_t recordCount() override { return inner_->recordCount(); }
  void moveFirst() override { read().moveFirst(); }
  void moveNext() override { read().moveNext(); }
  void requery() override { read().requery(); }
  void filter(std::string_view criterion) override { read().filter(criterion); }
  void addNew() override { inner_->addNew(); }
  void update() override {
    line_->pass(DatabaseCall::kStore);
    inner_->update();
  }
  void cancel() override { inner_->cancel(); }
  std::vector<FieldInfo> fields() const override { return inner_->fields(); }
  Value get(std::string_view field) override { return inner_->get(field); }
  void set(std::string_view field, const Value& value) override {
    line_->plan->passField(field);
    inner_->set(field, value);
  }

 private:
  Recordset& read() {
    line_->pass(DatabaseCall::kRead);
    return *inner_;
  }

  std::unique_ptr<Recordset> inner_;
  std::shared_ptr<Line> line_;
};

class FaultyConnection : public Connection {
 public:
  FaultyConnection(std::unique_ptr<Connection> inner, std::shared_ptr<Line> line)
      : inner_(std::move(inner)), line_(std::move(line)) {}

  std::int64_t execute(std::string_view sql) override {
    line_->pass(DatabaseCall::kExecute);
    return inner_->execute(sql);
  }
  std::unique_ptr<Recordset> open(std::string_view sql, CursorKind cursor, LockKind lock) override {
    line_->pass(DatabaseCall::kOpen);
    return std::make_unique<FaultyRecordset>(inner_->open(sql, cursor, lock), line_);
  }
  void beginTogether() override { inner_->beginTogether(); }
  void endTogether() override { inner_->endTogether(); }
  void walkTexts(std::string_view table, std::span<const std::string_view> columns, const TextVisitor& visit) override {
    line_->pass(DatabaseCall::kOpen);
    inner_->walkTexts(table, columns, visit);
  }

 private:
  std::unique_ptr<Connection> inner_;
  std::shared_ptr<Line> line_;
};

}  // namespace

void FaultPlan::failAt(DatabaseCall call, int nth, std::int32_t number, std::string description) {
  faults_.push_back({call, counts_[index(call)] + nth, number, std::move(description)});
}

void FaultPlan::pass(DatabaseCall call, bool& connectionLost) {
  ++total_;
  const int nth = ++counts_[index(call)];
  connectionLost = connectionLost || (total_ == loseAt_ && call != DatabaseCall::kConnect);
  if (connectionLost) throw ProviderError(provider_number::kUnspecified, "The connection was lost.");
  if (total_ == single_.at) throw ProviderError(single_.number, single_.description);
  for (const Fault& fault : faults_) {
    if (fault.call == call && fault.at == nth) throw ProviderError(fault.number, fault.description);
  }
}

void FaultPlan::passField(std::string_view name) const {
  for (const Refusal& refusal : refusals_) {
    if (equalsNoCase(refusal.field, name)) throw ProviderError(refusal.number, refusal.description);
  }
}

std::unique_ptr<Connection> FaultyAdapter::connect(const ConnectionClauses& clauses, CursorLocation location) {
  auto line = std::make_shared<Line>(Line{plan_});
  line->pass(DatabaseCall::kConnect);
  return std::make_unique<FaultyConnection>(inner_->connect(clauses, location), line);
}

}  // namespace orva
