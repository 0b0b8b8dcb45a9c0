#include "imports/asset/posting/post.h"

#include "imports/asset/control_plan.h"
#include "imports/asset/posting/after_posting.h"
#include "imports/asset/posting/asset_posting.h"

namespace orva {
namespace {

/// One row: one asset, or one for each unit of its quantity.
void postRow(AssetPosting& row, const BoundColumns<AssetPosting>& columns) {
  const std::int64_t assets = row.assetCount();
  for (std::int64_t unit = 0; unit < assets; ++unit) {
    if (!row.startAsset(unit)) return;
    columns.store(row);
    row.completeAsset();
    row.storeAsset();
  }
}

/// Stores the row whole or, as far as that can be done, not at all.
void postWholeRow(AssetPosting& row, const BoundColumns<AssetPosting>& columns) {
  try {
    postRow(row, columns);
  } catch (const ProviderError&) {
    row.takeBack();
    throw;
  }
}

PostingEnd postRows(AssetPosting& row, std::vector<PostedRecord>& posted) {
  const BoundColumns<AssetPosting> columns(assetColumns(), row);
  PostingLoop loop(row);
  loop.open("select * from Asset");
  return loop.run([&](PostingLoop& current) {
    postWholeRow(row, columns);
    if (row.stored().empty()) return;
    current.countStored();
    for (const std::string& identifier : row.stored()) posted.push_back({row.row(), identifier});
  });
}

/// The provider's general number, raised while a row was posted.
bool isDuplicateKey(const PostingEnd& end, const AssetPosting& row) {
  return row.isOpen() && end.failure && end.failure->number() == provider_number::kUnspecified;
}

/// Clean-up and life fill run over what was posted, also after a duplicate identifier or a stop.
void finishPosting(const ImportRun& run, PostResult& result) {
  try {
    cleanUpCodes(run.company);
    fillLifeAndLeaseDate(run.company);
  } catch (const ProviderError& error) {
    // A lost connection has the general number, too; only what fails after it tells.
    const std::string before = result.finished || result.text.empty() ? std::string() : result.text + "\n";
    result.text = before + error.description();
    result.finished = false;
  }
}

std::optional<ControlTotals> readControlTotals(const ImportRun& run, const std::vector<PostedRecord>& posted) {
  try {
    return companyTotals(run, assetControlPlan(), posted);
  } catch (const ProviderError&) {
    return std::nullopt;
  }
}

}  // namespace

PostResult postAssets(ImportRun& run) {
  try {
    AssetPosting row(run);
    std::vector<PostedRecord> posted;
    const PostingEnd end = postRows(row, posted);
    PostResult result = postResult(end);
    result.recordsStored = static_cast<std::int64_t>(posted.size());
    const bool isDuplicate = isDuplicateKey(end, row);
    if (isDuplicate) result.text = "Asset Id already present ";
    if (!end.failure || isDuplicate) finishPosting(run, result);
    result.controlTotals = readControlTotals(run, posted);
    return result;
  } catch (const ProviderError& error) {
    return {.text = error.description()};
  }
}

}  // namespace orva
