#include "app/batch/commands.h"
#include "wizard/import_kinds.h"

namespace orva {
namespace {

struct ModeName {
  std::string_view name;
  AssetMode mode;
};

constexpr ModeName kModes[] = {
    {"add", AssetMode::kAdd},
    {"modify-by-asset-id", AssetMode::kModifyByAssetId},
    {"modify-by-physical-id", AssetMode::kModifyByPhysicalId},
};

std::string knownKinds() {
  std::string names;
  for (const ImportKindNames& kind : importKindNames()) {
    if (!kind.batchName.empty()) names += " " + std::string(kind.batchName);
  }
  return names;
}

}  // namespace

std::optional<Selection> selectionOf(Session& session, const ImportChoice& choice) {
  Selection selection = choice.ticks;
  const auto kind = importKindByBatchName(choice.kind);
  if (!kind) {
    session.tell("Unknown kind '" + choice.kind + "'. The kinds are:" + knownKinds());
    return std::nullopt;
  }
  selection.kind = *kind;
  for (const ModeName& known : kModes) {
    if (known.name != choice.mode) continue;
    selection.mode = known.mode;
    return selection;
  }
  session.tell("Unknown mode '" + choice.mode + "'. The modes are: add modify-by-asset-id modify-by-physical-id");
  return std::nullopt;
}

}  // namespace orva
