#include "imports/asset/posting/post.h"

#include "imports/asset/posting/after_posting.h"
#include "imports/asset/posting/asset_posting.h"

namespace orva {
namespace {

/// One row: one asset, or one for each unit of its quantity.
void postRow(AssetPosting& row, const BoundColumns<AssetPosting>& columns, PostResult& counts) {
  const int assets = row.assetCount();
  for (int unit = 0; unit < assets; ++unit) {
    if (!row.startAsset(unit)) return;
    columns.store(row);
    row.completeAsset();
    row.record().update();
    ++counts.recordsStored;
    row.followAsset();
  }
}

PostingEnd postRows(AssetPosting& row, PostResult& counts) {
  const BoundColumns<AssetPosting> columns(assetColumns(), row);
  PostingLoop loop(row);
  loop.open("select * from Asset");
  return loop.run([&](PostingLoop& current) {
    postRow(row, columns, counts);
    current.countStored();
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
    if (result.finished || result.text.empty()) result.text = error.description();
    result.finished = false;
  }
}

}  // namespace

PostResult postAssets(ImportRun& run) {
  PostResult counts;
  try {
    AssetPosting row(run);
    const PostingEnd end = postRows(row, counts);
    PostResult result = postResult(end);
    result.recordsStored = counts.recordsStored;
    const bool isDuplicate = isDuplicateKey(end, row);
    if (isDuplicate) result.text = "Asset Id already present ";
    if (!end.failure || isDuplicate) finishPosting(run, result);
    return result;
  } catch (const ProviderError& error) {
    return {.text = error.description()};
  }
}

}  // namespace orva
