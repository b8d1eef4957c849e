#include "parsecs/forms/FormTable.h"

#include "parsecs/forms/index/IndexForm.h"
#include "parsecs/forms/map/MapForm.h"
#include "parsecs/forms/outline/OutlineForm.h"
#include "parsecs/forms/records/RecordsForm.h"
#include "parsecs/forms/rows/RowsForm.h"
#include "parsecs/forms/strict/StrictForm.h"
#include "parsecs/forms/tags/TagsForm.h"

namespace plugincs {

namespace {

constexpr const FormKind* kKinds[] = {
    &kRecordsForm, &kStrictForm, &kRowsForm, &kOutlineForm, &kTagsForm, &kIndexForm, &kMapForm,
};

}  // namespace

constinit const std::span<const FormKind* const> kFormKinds = kKinds;

}  // namespace plugincs
