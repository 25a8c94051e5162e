// Every block kind, in the order the naming table always had. A kind is defined in the
// file of its builder (rows/, page_blocks/).
#include "kinds/registry.h"

namespace ub {

extern const BlockKind kPageTitle, kSectionHeader, kCard, kSettingRow, kIconRow, kToggleRow, kDeviceCard,
    kEmptyState, kBottomActions, kDialog, kSliderRow, kProgressRow, kInputRow, kCheckboxRow, kRadioRow, kListItem,
    kWheelPicker, kTabs, kBottomNav, kBanner, kToast, kStatusPill, kDividerLabel, kGridIcons, kChartCard,
    kImageGallery, kKeypad, kTimeRow, kLoading, kFormSection, kToolbar, kBigValue, kPinDisplay, kGauge, kImage,
    kButtonRow, kPillRow;

const KindTable& block_kinds() {
  static const KindTable table({
      &kPageTitle,  &kSectionHeader, &kCard,         &kSettingRow,   &kIconRow,     &kToggleRow,
      &kDeviceCard, &kEmptyState,    &kBottomActions, &kDialog,      &kSliderRow,   &kProgressRow,
      &kInputRow,   &kCheckboxRow,   &kRadioRow,     &kListItem,     &kWheelPicker, &kTabs,
      &kBottomNav,  &kBanner,        &kToast,        &kStatusPill,   &kDividerLabel, &kGridIcons,
      &kChartCard,  &kImageGallery,  &kKeypad,       &kTimeRow,      &kLoading,     &kFormSection,
      &kToolbar,    &kBigValue,   &kPinDisplay, &kGauge,
      &kImage,      &kButtonRow,  &kPillRow,
  });
  return table;
}

}  // namespace ub
