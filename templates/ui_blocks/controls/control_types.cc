#include "controls/control_types.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace ub {

namespace {

using K = DefaultValue::Kind;
constexpr long long kWhite = 16777215;

constexpr DefaultValue num(long long a) { return {K::Int, a}; }
constexpr DefaultValue flag(bool a) { return {K::Bool, a}; }
constexpr DefaultValue str(std::string_view s) { return {K::Str, 0, -1, s}; }
constexpr DefaultValue colors(long long c0, long long c1 = -1) { return {K::Colors, c0, c1}; }
constexpr DefaultValue of(K k) { return {k}; }

#define ROLL_KEYS \
  {"rollEnable", flag(false)}, {"rollDirection", num(1)}, {"rollIntervalTime", num(150)}, {"rollStep", num(5)}

constexpr DefaultField kTextview[] = {
    {"alignment", num(0)},       {"colorTab", colors(kWhite)}, {"fontSize", num(16)}, {"touchable", flag(false)},
    {"backgroundColor", num(-1)}, {"bgColorTab", colors(-1)},  {"bold", flag(false)}, {"italic", flag(false)},
    {"fontFamily", num(0)},      {"text", str("")},            {"visible", flag(true)}, ROLL_KEYS};
constexpr DefaultField kButton[] = {
    {"alignment", num(37)},       {"colorTab", colors(kWhite, kWhite)}, {"picTab", of(K::EmptyObject)},
    {"text", str("")},            {"touchable", flag(true)},            {"backgroundColor", num(-1)},
    {"bgColorTab", colors(-1)},   {"bold", flag(false)},                {"italic", flag(false)},
    {"fontFamily", num(0)},       {"fontSize", num(16)},                {"visible", flag(true)},
    {"longClickIntervalTime", num(-1)}, {"longClickTimeOut", num(-1)},  ROLL_KEYS};
constexpr DefaultField kWindow[] = {{"backgroundColor", num(-1)}, {"hideTimeOut", num(-1)}, {"modal", flag(false)},
                                    {"touchable", flag(false)},   {"visible", flag(true)}};
constexpr DefaultField kScrollwindow[] = {
    {"dragMaxDis", num(200)}, {"orientation", num(1)}, {"edgeEffect", num(1)}, {"touchable", flag(true)}};
constexpr DefaultField kEdittext[] = {
    {"alignment", num(36)},    {"bgColorTab", colors(kWhite)}, {"bold", flag(false)},  {"beepEnable", flag(true)},
    {"colorTab", colors(kWhite)}, {"fontFamily", num(0)},      {"fontSize", num(16)},  {"hintText", str("")},
    {"hintTextColor", num(8947848)}, {"isPassword", flag(false)}, {"italic", flag(false)},
    {"passwordChar", str("*")}, {"text", str("")},              {"textType", num(0)},   {"touchable", flag(true)},
    {"visible", flag(true)},   ROLL_KEYS};
constexpr DefaultField kSeekbar[] = {
    {"backgroundColor", num(-1)}, {"backgroundPic", str("")}, {"defProgress", num(0)},
    {"max", num(100)},            {"orientation", num(0)},    {"progressPic", str("")},
    {"secondaryProgressPic", str("")}, {"thumb", of(K::Thumb)}, {"touchable", flag(true)},
    {"visible", flag(true)}};
constexpr DefaultField kCheckbox[] = {
    {"alignment", num(37)},    {"backgroundColor", num(-1)}, {"bold", flag(false)},   {"checked", flag(false)},
    {"bgColorTab", colors(-1)}, {"colorTab", colors(kWhite)}, {"fontFamily", num(0)}, {"fontSize", num(16)},
    {"italic", flag(false)},   {"iconPosition", of(K::Position)}, {"text", str("")},
    {"textPosition", of(K::Position)}, {"touchable", flag(true)}, {"visible", flag(true)}};
constexpr DefaultField kRadiogroup[] = {{"backgroundColor", num(-1)}, {"touchable", flag(true)},
                                        {"visible", flag(true)},      {"radiobuttons", of(K::EmptyArray)}};
constexpr DefaultField kListview[] = {
    {"autoRollback", flag(true)}, {"backgroundColor", num(-1)}, {"cols", num(1)},      {"cycleEnable", flag(false)},
    {"dragMaxDis", num(50)},      {"edgeEffect", num(1)},       {"hasScrollbar", flag(false)}, {"rows", num(1)},
    {"touchable", flag(true)},    {"visible", flag(true)},      {"orientation", num(1)}, {"colSpacing", num(0)},
    {"rowSpacing", num(0)},       {"item", of(K::EmptyObject)}};

constexpr DefaultField kSubitem[] = {
    {"id", num(0)},          {"caption", str("")},        {"position", of(K::Position)},
    {"alignment", num(36)},  {"backgroundColor", num(-1)}, {"bgColorTab", colors(-1)},
    {"bold", flag(false)},   {"colorTab", colors(kWhite)}, {"fontFamily", num(0)},
    {"fontSize", num(16)},   {"italic", flag(false)},      {"longClickIntervalTime", num(-1)},
    {"longClickTimeOut", num(-1)}, {"picTab", of(K::EmptyObject)}, {"text", str("")},
    {"touchable", flag(true)}, {"visible", flag(true)}};
constexpr DefaultField kRadiobutton[] = {
    {"id", num(0)},              {"caption", str("")},        {"position", of(K::Position)},
    {"alignment", num(36)},      {"backgroundColor", num(-1)}, {"bold", flag(false)},
    {"checked", flag(false)},    {"bgColorTab", colors(-1)},  {"colorTab", colors(kWhite)},
    {"fontFamily", num(0)},      {"fontSize", num(16)},       {"italic", flag(false)},
    {"iconPosition", of(K::Position)}, {"textPosition", of(K::Position)}, {"picTab", of(K::EmptyObject)},
    {"text", str("")},           {"touchable", flag(true)},   {"visible", flag(true)},
    {"beepEnable", flag(true)}};

#undef ROLL_KEYS

constexpr std::array<ControlType, 9> kTypes{{
    {"textview", kTextviewIds, kTextview},
    {"button", kButtonIds, kButton},
    {"window", kWindowIds, kWindow},
    {"scrollwindow", kScrollwindowIds, kScrollwindow},
    {"edittext", kEdittextIds, kEdittext},
    {"seekbar", kSeekbarIds, kSeekbar},
    {"checkbox", kCheckboxIds, kCheckbox},
    {"radiogroup", kRadiogroupIds, kRadiogroup},
    {"listview", kListviewIds, kListview},
}};

}  // namespace

Json DefaultValue::to_json() const {
  switch (kind) {
    case K::Int: return a;
    case K::Bool: return a != 0;
    case K::Str: return std::string(s);
    case K::Position: return object_of("left", 0, "top", 0, "width", 0, "height", 0);
    case K::Colors: return object_of("color0", a, "color1", b, "color2", -1, "color3", -1, "color4", -1);
    case K::Thumb:
      return object_of("size", object_of("width", 0, "height", 0), "normalPic", "", "pressedPic", "");
    case K::EmptyObject: return Json::object();
    case K::EmptyArray: return Json::array();
  }
  return Json();
}

const ControlType* control_type(std::string_view name) {
  for (const ControlType& t : kTypes)
    if (t.name == name) return &t;
  return nullptr;
}

std::span<const DefaultField> subitem_fields() { return kSubitem; }
std::span<const DefaultField> radiobutton_fields() { return kRadiobutton; }

Json record_from(std::span<const DefaultField> fields, Json given) {
  // A key the record does not have would be lost without a word.
  for (auto it = given.begin(); it != given.end(); ++it)
    if (std::none_of(fields.begin(), fields.end(), [&](const DefaultField& f) { return f.key == it.key(); }))
      throw std::logic_error("record_from: a given key is not a field of the record: " + given.dump());
  Json r = Json::object();
  auto& o = r.get_ref<Json::object_t&>();
  o.reserve(fields.size());
  for (const DefaultField& f : fields) {  // the keys are distinct: appended without a search
    auto it = given.find(f.key);
    o.emplace_back(std::string(f.key), it != given.end() ? std::move(*it) : f.v.to_json());
  }
  return r;
}

}  // namespace ub
