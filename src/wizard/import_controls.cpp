#include "wizard/import_controls.h"

namespace orva {

OptionButton& ImportControls::kindOption(ImportKindId kind) {
  OptionButton* const options[] = {&optAsset,           &optClosing, &optDep,         &optDepChild, &optDepChildFx,
                                   &OptCostBrkup,       &optUDF,     &optSaleEntries, &optAMCDet,   &optInsurDet,
                                   &optChangeOfAssetCat};
  static_assert(std::size(options) == static_cast<std::size_t>(ImportKindId::kChangeCategory) + 1);
  return *options[static_cast<std::size_t>(kind)];
}

OptionButton& ImportControls::modeOption(AssetMode mode) {
  OptionButton* const options[] = {&optAssetId, &optUpdAssetId, &optPhyId};
  return *options[static_cast<std::size_t>(mode)];
}

}  // namespace orva
