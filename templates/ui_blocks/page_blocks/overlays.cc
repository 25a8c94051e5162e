// Dialog and toast: hidden full-screen windows at the root, shown and hidden by the
// application at run time.
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"
#include "spec/page_limits.h"

namespace ub {

namespace {
const Json kEmptyText = "";
const Json kMaskChar = "*";

Json overlay_payload(bool modal, bool visible) {
  Json p = Json::object();
  p["modal"] = modal;
  p["visible"] = visible;
  p["touchable"] = false;
  return p;
}
}  // namespace

int build_dialog(Build& bd, const BlockRecord& blk, NodeList& parent) {
  const Metrics& m = bd.page.m;
  const int W = bd.page.W, H = bd.page.H;
  const std::string q = caption_id(blk);
  auto win = make_node("window", cat("DialogWindow", q), Pos{0, 0, W, H}, overlay_payload(true, flag(blk, "visible")));

  const std::string scrim = bd.pictures.shape(cat("cc_scrim_", W, "x", H, ".png"), W, H, 0, bd.page.tcol("scrim", 102));
  win->children.push_back(
      bd.controls.deco(cat("DialogScrim", q), bd.controls.box(0, 0, W, H), bd.page.col("surface"), scrim, m.fs.b2));

  // The panel takes 80% of a compact screen's width, 60% of any other's, at least 200 px.
  const int pw = std::max(m.compact ? r4(W * 0.8) : r4(W * 0.6), 200);
  const int title_h = m.h_h2, body_h = m.h_b1, lines = m.compact ? 1 : 2;
  // An input field stands between the body and the buttons, the spacer above it.
  const Json& input = value(blk, "input");
  const bool has_input = truthy(input);
  const int input_y = m.spacer2 + title_h + m.spacer + body_h * lines + m.spacer;
  const int ph = 2 * m.spacer2 + title_h + m.spacer + body_h * lines + m.spacer2 + m.btn_h +
                 (has_input ? m.spacer + m.edit_h : 0);
  const int px_ = (int)floordiv(W - pw, 2), py_ = (int)floordiv(H - ph, 2);
  auto panel = make_node("window", cat("DialogPanel", q), Pos{px_, py_, pw, ph});

  const std::string pbg =
      bd.pictures.shape(cat("panel_", pw, "x", ph, ".png"), pw, ph, m.radius, bd.page.tcol("surface"));
  panel->children.push_back(
      bd.controls.deco(cat("DialogPanelBg", q), Pos{0, 0, pw, ph}, bd.page.col("surface"), pbg, m.fs.b2));
  panel->children.push_back(bd.controls.text(cat("DialogTitle", q),
                                             bd.controls.box(m.spacer2, m.spacer2, pw - 2 * m.spacer2, title_h),
                                             m.fs.h2, bd.page.col("fg1"), text(blk, "title"), "", kAlignLeft, true));
  panel->children.push_back(
      bd.controls.text(cat("DialogBody", q),
                       bd.controls.box(m.spacer2, m.spacer2 + title_h + m.spacer, pw - 2 * m.spacer2, body_h * lines),
                       m.fs.b1, bd.page.col("fg2"), text(blk, "body")));

  if (has_input) {
    const Json& own = get(input, "name");
    const std::string id = truthy(own) ? to_text(own) : q;
    const Json& hint = truthy(get(input, "placeholder")) ? get(input, "placeholder") : kEmptyText;
    panel->children.push_back(bd.controls.make_edittext(
        cat("DialogInput", id), bd.controls.box(m.spacer2, input_y, pw - 2 * m.spacer2, m.edit_h),
        EditFields{hint, kEmptyText, 0, get(input, "kind") == "password", kMaskChar}));
  }

  const int bw = (int)floordiv(pw - 3 * m.spacer2, 2), bh = m.btn_h, by = ph - m.spacer2 - m.btn_h;
  const int br = (int)floordiv(m.radius, 2) + 2;
  const std::string sbg =
      bd.pictures.shape(cat("btn_secondary_", bw, "x", bh, ".png"), bw, bh, br, bd.page.tcol("brand1"));
  panel->children.push_back(bd.controls.button(cat("DialogButtonSecondary", q), bd.controls.box(m.spacer2, by, bw, bh),
                                               sbg, m.fs.b2, bd.page.col("brand"), kAlignCenter,
                                               text(blk, "secondary")));
  const std::string pbg2 =
      bd.pictures.shape(cat("btn_primary_", bw, "x", bh, ".png"), bw, bh, br, bd.page.tcol("brand"));
  panel->children.push_back(bd.controls.button(cat("DialogButtonPrimary", q),
                                               bd.controls.box(2 * m.spacer2 + bw, by, bw, bh), pbg2, m.fs.b2,
                                               bd.page.col("onBrand"), kAlignCenter, text(blk, "primary")));

  win->children.push_back(panel);
  parent.push_back(win);
  return H;
}

int build_toast(Build& bd, const BlockRecord& blk, NodeList& parent) {
  const Metrics& m = bd.page.m;
  const int W = bd.page.W, H = bd.page.H;
  const std::string q = caption_id(blk);
  const std::string txt = text(blk, "text");
  const int fs = m.fs.b1, h = m.toast_h;
  // As wide as the text, at most 70% of the content width.
  const int w = std::min(bd.page.text_box_w(txt, fs) + 2 * m.spacer3, r4(m.content_w * 0.7));
  auto win = make_node("window", cat("ToastWindow", q), Pos{0, 0, W, H}, overlay_payload(false, flag(blk, "visible")));

  const int tx = (int)floordiv(W - w, 2);
  const int ty = (int)std::max<long long>(std::min<long long>(trunc_int((H - h) * m.toast_top_of_h), H - h), 0);
  const std::string p_bg =
      bd.pictures.shape(cat("toast_bg_", w, "x", h, ".png"), w, h, m.radius, bd.page.tcol("mask", 153));
  win->children.push_back(
      bd.controls.deco(cat("ToastBg", q), bd.controls.box(tx, ty, w, h), bd.page.col("onBrand"), p_bg, fs));
  const std::string cap = cat("ToastText", q);
  win->children.push_back(
      bd.controls.text(cap, bd.controls.box(tx, ty, w, h), fs, bd.page.col("onBrand"), txt, "", kAlignCenter));
  check_text_fit(bd.notes, bd.page, cap, txt, fs, w, h, "toast");

  parent.push_back(win);
  return H;
}

namespace {

// The input field of a dialog: a record of known kind and, when named, an identifier.
long long dialog_limits(const LimitCheck& lc, const BlockRecord& b) {
  const Json& input = value(b, "input");
  if (!truthy(input)) return lc.m.h_b2;
  if (!input.is_object()) fail_at(b, "input", cat(literal_form(input), " is not a record {kind, placeholder, name}"));
  const Json& kind = get(input, "kind");
  if (truthy(kind) && kind != "text" && kind != "password")
    fail_at(b, "input.kind", cat(literal_form(kind), " is not text or password"));
  const Json& own = get(input, "name");
  if (truthy(own) && !(own.is_string() && is_identifier(own.get<std::string>())))
    fail_at(b, "input.name",
            cat(literal_form(own), " is not an identifier: letters, digits and underscores, not starting with a digit, "
                                   "at most ",
                kMaxIdentifierLength, " characters"));
  return lc.m.h_b2;
}

int build_dialog_kind(Build& bd, const BlockRecord& blk, NodeList& parent, Spot) { return build_dialog(bd, blk, parent); }
int build_toast_kind(Build& bd, const BlockRecord& blk, NodeList& parent, Spot) { return build_toast(bd, blk, parent); }

}  // namespace

extern const BlockKind kDialog{.type = "dialog", .prefix = "Dialog", .flow = Flow::Dialog, .limits = dialog_limits,
                               .build = build_dialog_kind};
extern const BlockKind kToast{.type = "toast", .prefix = "Toast", .flow = Flow::Toast, .build = build_toast_kind};

}  // namespace ub
