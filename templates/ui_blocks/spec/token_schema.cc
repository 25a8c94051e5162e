// The schema of a tokens file, made from the library's own tokens so that the two cannot
// differ, with what each token means.
#include <map>

#include "spec/theme.h"

namespace ub {

namespace {

// By path; "*" stands for any one name (a font role).
const std::map<std::string, std::string>& descriptions() {
  static const std::map<std::string, std::string> d = {
      {"$schema", "schema of this file for editors; compose ignores it"},
      {"base_screen", "the design screen that the font sizes of \"font\" are given for"},
      {"base_screen.width", "design screen width in px (not read)"},
      {"base_screen.height", "design screen height in px: a font's base size scales by screen height / this"},
      {"compact_when_h_lt", "screens lower than this (px) are compact: fixed fonts, one-line rows, narrower padding"},
      {"ladder", "the font sizes allowed, in px: a scaled size snaps to the nearest"},
      {"font", "font roles of screens that are not compact: h1 titles, h2 headings, b1 body text, b2 small text"},
      {"font.*", "a font role: its size at the design screen height, and its limits"},
      {"font.*.base", "size in px at the design screen height"},
      {"font.*.min", "smallest size in px"},
      {"font.*.max", "largest size in px"},
      {"compact_font", "fixed font sizes of compact screens, by role (h1, h2, b1, b2)"},
      {"compact_font.*", "font size in px on compact screens"},
      {"spacer", "the spacing steps in px; the size tokens name them"},
      {"spacer.spacer", "the basic step: gaps inside blocks, around control bands and keys"},
      {"spacer.spacer1", "the small step"},
      {"spacer.spacer2", "the medium step: toast padding, grid column gap"},
      {"spacer.spacer3", "the large step"},
      {"size", "measures: pixels, and ratios of the screen, the row or the font"},
      {"size.pad_l_compact", "spacer of the rows' left and right padding on compact screens"},
      {"size.pad_l_wide", "spacer of the rows' left and right padding on other screens"},
      {"size.card_inset", "spacer of the page's side margin and the card inset"},
      {"size.group_gap", "spacer of the gap around each group of blocks"},
      {"size.row_gap_px", "gap in px between the lines of a row"},
      {"size.text_vpad", "vertical padding in px of a row's text"},
      {"size.text_h_of_fs", "line height as a multiple of the font size"},
      {"size.chev_w_of_w", "chevron width as a part of the screen width"},
      {"size.chev_w_min", "smallest chevron width in px"},
      {"size.chev_h_of_h", "chevron height as a part of the screen height"},
      {"size.chev_h_min", "smallest chevron height in px"},
      {"size.touch_min", "smallest side in px of a touch target before the design lint warns"},
      {"size.icon_fill_box_from_h", "screens at least this high (px) take each icon from the smallest tier covering its box"},
      {"display", "the size of large readings (big_value, gauge): a font size scaled like the font roles"},
      {"display.base", "size in px at the design screen height"},
      {"display.min", "smallest size in px"},
      {"display.max", "largest size in px"},
      {"display.compact", "fixed size in px on compact screens"},
      {"display.steps", "the sizes a reading may take, in px: it steps down through them until it fits"},
      {"size.text_chev_gap_of_h", "gap between a text and the control right of it, as a part of the screen height"},
      {"size.text_chev_gap_min", "smallest gap in px between a text and the control right of it"},
      {"size.text_chev_gap_max", "largest gap in px between a text and the control right of it"},
      {"size.row_h_of_h", "row height as a part of the screen height (at least the text's height)"},
      {"size.row_h_of_h_compact", "row height as a part of the screen height on compact screens"},
      {"size.icon_bg_of_row_h", "the tile behind a row icon, as a part of the row height"},
      {"size.icon_of_row_h", "a row icon, as a part of the row height"},
      {"size.icon_min", "smallest row icon in px"},
      {"size.icon_pad_of_pad_l", "left edge of the row icon tile, as a part of the row padding"},
      {"size.glyph_min_px", "smallest standalone icon in px (toolbars, grids, navigation)"},
      {"size.tb_h_of_h", "toolbar height as a part of the screen height"},
      {"size.tb_ic_of_tb_h", "toolbar icon as a part of the toolbar height"},
      {"size.key_h_max_of_h", "largest keypad key height as a part of the screen height"},
      {"size.key_h_of_w", "keypad key height as a part of its width"},
      {"size.chart_h_of_h", "chart plot height as a part of the screen height"},
      {"size.gal_tile_of_w", "gallery tile height as a part of its width"},
      {"size.gal_ic_max", "largest gallery icon in px"},
      {"size.load_h_of_h", "loading block height as a part of the screen height"},
      {"size.load_bar_h_of_fs", "skeleton bar height as a part of the body font size"},
      {"size.bar_top_of_h", "title band height as a part of the screen height"},
      {"size.bar_bot_of_h", "bottom bar height as a part of the screen height"},
      {"size.bar_min_pad", "least padding in px under the title band's text"},
      {"shape", "corners and lines"},
      {"shape.container_radius_of_row_h", "corner radius of cards and other containers, as a part of the row height"},
      {"shape.container_radius_px", "largest corner radius in px"},
      {"shape.container_radius_min", "smallest corner radius in px"},
      {"shape.line_px", "line width in px"},
      {"shape.line_px_thick_below_row_h", "rows lower than this (px) get 2 px lines; 0 makes every line 0 px wide"},
      {"scroll", "scrolling of the content window"},
      {"scroll.drag_max_dis_of_w", "overscroll limit as a part of the screen width"},
      {"scroll.drag_max_dis_min", "smallest overscroll limit in px"},
      {"scroll.orientation", "scroll direction of the content window, as the layout gives it (1: vertical)"},
      {"scroll.edge_effect", "the edge effect of the content window, as the layout gives it"},
      {"color", "the colours: \"#RRGGBB\", or \"#RRGGBBAA\" with alpha last"},
      {"color.page", "page background; also the background of an \"off\" state"},
      {"color.surface", "cards, sections, bands, dialogs and tiles"},
      {"color.fg1", "main text"},
      {"color.fg2", "secondary text: values, subtitles, hints, \"off\" states"},
      {"color.line", "separators and outlines"},
      {"color.brand", "the accent: primary buttons, switches and checks that are on, selected tabs, icons"},
      {"color.brand1", "the light accent: icon tiles, selected rows and wheel bands"},
      {"color.onBrand", "text and marks on the accent colour, and the toast's text"},
      {"color.switchOff", "switches, check boxes and radio buttons that are off, offline dots"},
      {"color.chevron", "chevrons"},
      {"color.scrim", "the dimmed screen behind a dialog (drawn at 40 % unless the colour has its own alpha)"},
      {"color.mask", "the toast's background (drawn at 60 % unless the colour has its own alpha)"},
      {"color.info", "the \"info\" state: banners, pills, grid and list icons"},
      {"color.info1", "the background of the \"info\" state"},
      {"color.success", "the \"success\" and \"ok\" states"},
      {"color.success1", "the background of the \"success\" and \"ok\" states"},
      {"color.warn", "the \"warn\" state"},
      {"color.warn1", "the background of the \"warn\" state"},
      {"color.danger", "the \"danger\" state"},
      {"color.danger1", "the background of the \"danger\" state"},
  };
  return d;
}

// "font.h1.base" -> "font.*.base": the role's name replaced.
std::string role_pattern(const std::string& path) {
  for (const char* group : {"font.", "compact_font."}) {
    if (!starts_with(path, group)) continue;
    const size_t start = std::string(group).size();
    const size_t end = path.find('.', start);
    return std::string(group) + "*" + (end == std::string::npos ? "" : path.substr(end));
  }
  return path;
}

Json schema_of(const std::string& path, const Json& lib, const Json& spacers) {
  Json s = Json::object();
  const std::string what = token_description(path);
  switch (token_form(path, lib)) {
    case TokenForm::Group: {
      s["type"] = "object";
      Json props = Json::object();
      for (auto it = lib.begin(); it != lib.end(); ++it)
        props[it.key()] = schema_of(path.empty() ? it.key() : path + "." + it.key(), it.value(), spacers);
      if (path.empty())
        props["$schema"] = object_of("type", "string", "description", token_description("$schema"));
      s["properties"] = std::move(props);
      s["additionalProperties"] = false;
      break;
    }
    case TokenForm::Colour:
      s["type"] = "string";
      s["pattern"] = "^#([0-9A-Fa-f]{6}|[0-9A-Fa-f]{8})$";
      break;
    case TokenForm::Whole:
      s["type"] = "integer";
      s["minimum"] = token_minimum(path);
      s["maximum"] = kMaxWholeToken;
      break;
    case TokenForm::Number:
      s["type"] = "number";
      s["minimum"] = token_minimum(path);
      s["maximum"] = kMaxNumberToken;
      break;
    case TokenForm::SpacerName: {
      Json names = Json::array();
      for (auto it = spacers.begin(); it != spacers.end(); ++it) names.push_back(it.key());
      s["enum"] = std::move(names);
      break;
    }
    case TokenForm::Ladder:
      s["type"] = "array";
      s["minItems"] = 1;
      s["items"] = object_of("type", "integer", "minimum", 1, "maximum", kMaxWholeToken);
      break;
  }
  if (!lib.is_object()) s["default"] = lib;
  if (!what.empty()) s["description"] = what;
  return s;
}

}  // namespace

std::string token_description(const std::string& path) {
  const auto& d = descriptions();
  auto it = d.find(path);
  if (it == d.end()) it = d.find(role_pattern(path));
  return it == d.end() ? "" : it->second;
}

Json tokens_schema(const Json& library) {
  if (!library.is_object()) throw InputError("_tokens.json must hold a mapping");
  const Json& spacers = get(library, "spacer");
  Json body = schema_of("", library, spacers.is_object() ? spacers : Json::object());
  Json s = Json::object();
  s["$schema"] = "https://json-schema.org/draft/2020-12/schema";
  s["$id"] = "https://schemas.moraine.example/compose/tokens.schema.json";
  s["title"] = "compose design tokens (_tokens.json, and a theme laid over it)";
  s["description"] =
      "A theme gives only the tokens it changes: mappings merge key by key, any other value replaces the "
      "library's. The library's _tokens.json gives every token.";
  for (auto it = body.begin(); it != body.end(); ++it) s[it.key()] = it.value();
  return s;
}

}  // namespace ub
