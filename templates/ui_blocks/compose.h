// Composer: the state of one page and every operation that builds it. The class is
// split over the subsystem directories: spec/ (state, tokens, metrics), controls/
// (factories, document), page/ (flow, naming), rows/, page_blocks/, assets/, checks/.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "assets/asset.h"
#include "controls/emit_layer.h"
#include "controls/node.h"
#include "controls/serialize.h"
#include "spec/metrics.h"
#include "base/primitives.h"
#include "spec/rgba.h"
#include "base/values.h"

namespace ub {

// Text box of a row (row_boxes).
struct RowBoxes {
  int text_left = 0, text_w = 0, right_edge = 0;
};

// Boxes of one list row (list_row_boxes).
struct ListRowBoxes {
  int ic = 0;
  bool has_ic = false;
  int left = 0, right_edge = 0, vw = 0, tw = 0;
  std::string title, value;
};

// Effective absolute rectangle of a node (_collect_rects).
struct RectRecord {
  int l = 0, t = 0, r = 0, b = 0;
  std::string caption, type;
  bool leaf = false;
  std::vector<std::string> path;
};

// What the driver found for a run: the block library directory and the table of
// the keys every control record must carry.
struct Installation {
  std::string blocks_dir;
  EmitLayer required_keys;
};

class Composer {
 public:
  Composer(Json spec, std::string page_name, const Installation& inst);

  // ---- state (in construction order) ----
  Json spec;  // the spec as read, its page moved into `page`
  Json page;  // mapping; blocks get _seq/_name written in place
  std::string page_name;
  Json tok;
  int W = 0, H = 0;
  Metrics m;
  std::map<std::string, Json> blocks;  // block library: type -> definition
  int seq_ = 0;
  std::map<std::string, Asset> assets;  // sorted by name = emission order
  std::vector<std::string> notes;
  std::vector<IconUse> icon_uses;
  std::vector<IconFallback> icon_fallbacks;
  NodeList root;
  NodeList content;
  int y = 0;
  std::pair<double, double> origin{0, 0};
  bool title_done = false;
  int sub_ = 0;
  std::optional<int> fam_reserve;
  std::optional<bool> fam_icon;
  std::optional<std::vector<std::pair<std::string, int>>> row_gaps_;
  std::vector<int> row_gap_places_;  // the place of each row gap's block
  std::optional<NodeList> nodes_;
  int content_h = 0;
  int control_count = 0;
  std::map<std::string, long long> col_map;  // col_int() once: the colours never change
  std::string blocks_dir;
  EmitLayer required_keys;
  // Place lines of the blocks built, which Node::place indexes, and the one being built.
  std::vector<std::string> places;
  int building = -1;

  // ---- tokens and colours (spec/) ----
  std::string tok_color(const std::string& name) const;      // raw "#RRGGBB"
  Rgba tcol(const std::string& name, int default_a = 255) const;  // rgba of a colour token
  long long col(const std::string& name) const;               // col_int()[name]
  Json col_int() const;                                       // name -> integer colour
  int text_box_w(const std::string& txt, double fs, int align = 37, double slack = 1.1) const;
  std::pair<std::string, std::string> sem_color(const std::string& state) const;

  // ---- control factories (controls/) ----
  Pos box(double x, double y, double w, double h) const;
  std::pair<int, int> xy(double x, double y) const;
  static NodeList collect_controls(const NodeList& nodes);
  NodePtr text(const std::string& caption, Pos pos, int fs, long long color, const std::string& txt = "",
               const std::string& bg = "", int align = 36, bool bold = false, bool touchable = false);
  NodePtr button(const std::string& caption, Pos pos, const std::string& bg = "", std::optional<int> fs = {},
                 std::optional<long long> color = {}, int align = 37, const std::string& txt = "",
                 bool touchable = true);
  // A decoration: text with empty txt, align 37, the picture in bg, fs = m.fs.b2 by default.
  NodePtr deco(const std::string& caption, Pos pos, long long color, const std::string& bg, int fs = 0);
  Json subitem(const std::string& caption, Pos pos, int fs, long long color, const std::string& txt = "",
               const std::string& pic = "", int align = 36, bool touchable = true);
  NodePtr sep_node(int x, int y, int w, int seq);
  NodePtr make_seekbar(const std::string& caption, Pos bx, const Json& progress, bool readonly = false);
  NodePtr make_edittext(const std::string& caption, Pos bx, const Json& blk);
  NodePtr make_checkbox(const std::string& caption, Pos bx, bool checked);
  NodePtr make_radiogroup(const std::string& caption, Pos bx, const Json& opts, const Json& selected,
                          const std::string& name);
  // The layout file of the page with the index of its records, refused (StopError) on
  // duplicate captions, uneven row gaps or characters outside the engine's font.
  LayoutText layout();
  Json document();  // the same layout as a JSON value

  // ---- page flow and naming (page/) ----
  NodeList run();
  int next_seq();
  Json& name_block(Json& blk);
  // Names the blocks of a list and writes each one's place in spec.json as "_path".
  void name_tree(Json& blocks, const std::string& path = "page.blocks");

  // ---- row family (rows/) ----
  void scan_row_family();
  int plan_row_reserve(const std::vector<const Json*>& rows) const;
  void assert_icon_uniform() const;
  RowBoxes row_boxes(int x0, int y0, int w) const;
  int row_height(const Json& blk) const;
  void note_row_gaps(const std::string& caption, int right_edge, std::optional<int> rt_edge);
  void assert_row_gaps() const;
  int build_row(const Json& blk, NodeList& parent, int x0, int y0, int w, int reserve, bool has_icon);
  int build_field_row(const Json& blk, NodeList& parent, int x0, int y0, int w);
  int build_section(const Json& blk, NodeList& parent, int x, int y);
  int build_card(const Json& blk, NodeList& parent, int x, int y);
  int build_form_section(const Json& blk, NodeList& parent, int x, int y);
  ListRowBoxes list_row_boxes(int w, int ih, const Json& row, bool chevron) const;
  ListRowBoxes list_row_check(const std::string& caption, int w, int ih, const Json& row, bool chevron);
  Json list_row_subitems(const std::string& caption, int w, int ih, const Json& row, bool chevron);
  Json list_item_template(const std::string& caption, int w, int ih, bool chevron = true,
                          const Json& row = Json());
  int build_list(const Json& blk, NodeList& parent, int x, int y, int w);
  int build_wheel(const Json& blk, NodeList& parent, int x, int y, int w);

  // ---- page-level blocks (page_blocks/) ----
  int build_title(const Json& blk, NodeList& parent, int x, int y);
  int build_actions(const Json& blk, NodeList& parent, int x, int y);
  int build_dialog(const Json& blk, NodeList& parent);
  int build_toast(const Json& blk, NodeList& parent);
  int build_tabs(const Json& blk, NodeList& parent, int x, int y);
  int build_banner(const Json& blk, NodeList& parent, int x, int y);
  int build_pill(const Json& blk, NodeList& parent, int x, int y);
  int build_divider_label(const Json& blk, NodeList& parent, int x, int y);
  int build_empty(const Json& blk, NodeList& parent, int x, int y);
  int build_grid(const Json& blk, NodeList& parent, int x, int y);
  int build_gallery(const Json& blk, NodeList& parent, int x, int y);
  int build_keypad(const Json& blk, NodeList& parent, int x, int y);
  int build_chart_card(const Json& blk, NodeList& parent, int x, int y);
  int build_loading(const Json& blk, NodeList& parent, int x, int y);
  int build_toolbar(const Json& blk, NodeList& parent);
  int build_nav(const Json& blk, NodeList& parent);

  // ---- picture registry and icons (assets/) ----
  std::string shape(const std::string& name, double w, double h, double radius, Rgba fill,
                    std::optional<Rgba> border = {}, double border_w = 1);
  std::string chevron(const std::string& name, double w, double h, Rgba color);
  std::string clip_shape(const std::string& name, double w, double h, double radius, Rgba fill, double src_w,
                         double src_h, double src_x, double src_y, int ss = 8);
  std::string bar(const std::string& name, double w, double h, double bar_h, Rgba fill);
  std::string mark(const std::string& name, double w, double h, double radius, Rgba fill,
                   const std::string& mark = "", double mark_size = 0, std::optional<Rgba> mark_color = {},
                   std::optional<Rgba> border = {}, double border_w = 1);
  std::string chart(const std::string& name, double w, double h, const std::string& kind,
                    const std::vector<double>& data, Rgba color, Rgba axis, int base_h = 1);
  std::string glyph(const std::string& name, const std::string& g, double size, Rgba color,
                    std::optional<std::pair<int, int>> canvas = {}, std::optional<std::string> state = {});
  // Writes every registered picture under project/resources/images; returns names in order.
  std::vector<std::string> emit_assets(const std::string& project_root);

  // ---- self-checks (checks/) ----
  void check_text_fit(const std::string& caption, const std::string& txt, double fs, int box_w, int box_h,
                      const std::string& where);
  void assert_children_fit(const Node& win, int cw, int ch, const std::string& where) const;
  static std::vector<RectRecord> collect_rects(const NodeList& nodes, int ox = 0, int oy = 0,
                                               const std::optional<std::array<int, 4>>& clip = {},
                                               std::vector<RectRecord>* out = nullptr,
                                               const std::vector<std::string>& path = {});
  void assert_no_bar_overlap(const NodeList& content_nodes, const NodeList& band_nodes);
};

// Document scans (checks/).
extern const std::u32string BLACKLIST_CHARS;
std::vector<std::pair<std::optional<std::string>, std::string>> find_forbidden_chars(const Json& doc);
Json duplicate_captions(const Json& doc);  // caption -> [keys], only captions seen twice or more
void assert_caption_unique(const Json& doc, const std::string& page_name = "");
// Names the places (see Node::place) of the blocks that made the duplicates.
void assert_caption_unique(const std::vector<ControlRef>& controls, const std::string& page_name = "",
                           const std::vector<std::string>& places = {});
// False when the text certainly holds no forbidden character (all of them are non-ASCII
// and written literally in a layout), so the scan of the parsed document can be skipped.
bool may_hold_forbidden(std::string_view text);

// Logic skeleton (logic/).
std::vector<std::string> collect_button_caps(const Json& node);
std::vector<std::string> collect_edittext_caps(const Json& node);
std::vector<std::string> collect_button_caps(const std::vector<ControlRef>& controls);
std::vector<std::string> collect_edittext_caps(const std::vector<ControlRef>& controls);
// The skeleton's text (refuses duplicate button captions), its path relative to the project,
// and both written into a project.
std::string logic_text(const Json& doc);
std::string logic_text(const std::vector<ControlRef>& controls);
std::string logic_path(const std::string& page);
std::string emit_logic(const std::string& project_root, const std::string& page, const Json& doc);

}  // namespace ub
