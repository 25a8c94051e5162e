#include "spec/page_limits.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cmath>

#include "compose.h"

namespace ub {

namespace {

// A block and where it stands in spec.json, for the messages.
struct Where {
  const Json& blk;
  std::string path;  // page.blocks[3].blocks[1]

  std::string label() const {
    const Json& t = get(blk, "type");
    return path + " (" + (t.is_string() ? t.get<std::string>() : to_text(t)) + ")";
  }
  [[noreturn]] void fail(const std::string& what) const { throw InputError("spec.json: " + label() + ": " + what); }
};

std::string type_of(const Json& blk) {
  const Json& t = get(blk, "type");
  return t.is_string() ? t.get<std::string>() : "";
}

// The integer of a key read with a default ("a false value gives def"), with the
// block named when the value is no integer or out of range.
long long int_key(const Where& w, const char* key, long long def) {
  const Json& v = get(w.blk, key);
  if (!truthy(v)) return def;
  try {
    return int_of(v);
  } catch (const InputError& e) {
    w.fail(cat(key, ": ", e.what()));
  }
}

// A count that may not exceed `most`; the reason says what the limit comes from.
void at_most(const Where& w, const std::string& what, long long n, long long most, const std::string& reason) {
  if (n > most) w.fail(cat(what, " ", n, " is more than fits: at most ", most, " ", reason));
}

// Entries of a list value; absent or false gives none; the builders refuse other types.
size_t list_size(const Json& blk, const char* key) {
  const Json& v = get(blk, key);
  return v.is_array() ? v.size() : 0;
}

// A key whose text becomes part of a picture name: a text when given at all.
void name_text(const Where& w, const Json& holder, const std::string& key, const std::string& shown) {
  const Json& v = get(holder, key);
  if (!truthy(v) || v.is_string()) return;
  w.fail(cat(shown, " must be a text, not ", type_name(v), " ", literal_form(v)));
}

// Icons and states of the entries of a list key (items, actions...).
void entry_names(const Where& w, const char* list_key, std::initializer_list<const char*> keys,
                 bool plain_is_icon) {
  const Json& list = get(w.blk, list_key);
  if (!list.is_array()) return;
  for (size_t i = 0; i < list.size(); ++i) {
    const Json& e = list[i];
    const std::string at = cat(list_key, "[", i, "]");
    if (e.is_object()) {
      for (const char* k : keys) name_text(w, e, k, at + "." + k);
    } else if (plain_is_icon && truthy(e) && !e.is_string()) {
      w.fail(cat(at, " must be an icon name or a mapping, not ", type_name(e), " ", literal_form(e)));
    }
  }
}

class PageCheck {
 public:
  explicit PageCheck(const Metrics& m) : m_(m), room_((long long)kScrollScreens * m.H) {}

  void page(const Json& pg) {
    const Json& blocks = get(pg, "blocks");
    int overlays = 0;
    if (blocks.is_array()) {
      for (size_t i = 0; i < blocks.size(); ++i) {
        const Where w{blocks[i], cat("page.blocks[", i, "]")};
        const std::string t = type_of(w.blk);
        if (t == "page_title" || t == "toolbar" || t == "bottom_nav" || t == "bottom_actions" || t == "dialog" ||
            t == "toast") {
          if (++overlays > kMaxOverlays)
            w.fail(cat("a page holds at most ", kMaxOverlays, " fixed bands and overlays"));
          block(w);
          continue;
        }
        // Each block is bounded on its own; the page's length only costs linear time.
        block(w);
      }
    }
    const Json& footer = get(pg, "footer");
    if (footer.is_object()) block(Where{footer, "page.footer"});
  }

 private:
  // Checks one block; returns the least height it takes in the content flow.
  long long block(const Where& w) {
    if (!w.blk.is_object()) return 0;
    names(w);
    const std::string t = type_of(w.blk);
    if (t == "card" || t == "form_section") {
      long long h = 0;
      const Json& inner = get(w.blk, "blocks");
      if (inner.is_array())
        for (size_t i = 0; i < inner.size(); ++i) {
          h += std::max<long long>(block(Where{inner[i], cat(w.path, ".blocks[", i, "]")}), m_.row_h);
          if (h > room_) w.fail(cat("its rows are taller than the ", kScrollScreens, " screens one block may take (",
                                    room_, " px)"));
        }
      return h;
    }
    if (t == "image_gallery") return gallery(w);
    if (t == "loading") return loading(w);
    if (t == "list_item") return list(w);
    if (t == "wheel_picker") return wheel(w);
    if (t == "grid_icons") return grid(w);
    if (t == "radio_row") return radio(w);
    if (t == "tabs") tabs(w);
    if (t == "chart_card") chart(w);
    if (t == "slider_row" || t == "progress_row") progress(w);
    if (t == "input_row") int_key(w, "textType", 0);
    if (t == "bottom_nav") int_key(w, "selected", 0);
    return m_.h_b2;
  }

  // The block name becomes part of captions and callback names.
  void names(const Where& w) {
    const Json& v = get(w.blk, "name");
    if (truthy(v) && !(v.is_string() && is_identifier(v.get<std::string>())))
      w.fail(cat("name ", literal_form(v), " is not an identifier (letters, digits and underscores, not starting "
                 "with a digit, at most ", kMaxIdentifierLength, " characters)"));
    for (const char* k : {"icon", "backIcon", "state", "icon_state"}) name_text(w, w.blk, k, k);
    entry_names(w, "items", {"icon", "state", "icon_state"}, false);
    entry_names(w, "actions", {"icon"}, true);
  }

  // Rows of things stacked in the content: count × pitch must fit the scroll room.
  long long stacked(const Where& w, const char* key, long long n, long long pitch) {
    pitch = std::max<long long>(pitch, 1);
    at_most(w, key, n, room_ / pitch,
            cat("fit in the ", kScrollScreens, " screens one block may take (", room_, " px at ", pitch, " px each)"));
    return n * pitch;
  }

  long long gallery(const Where& w) {
    int_key(w, "cols", 3);
    int_key(w, "count", 0);
    const long long rows = std::max<long long>(int_key(w, "rows", 2), 1);
    return stacked(w, "rows", rows, m_.ic_min + 2 * m_.spacer + m_.grid_gap);
  }

  long long loading(const Where& w) {
    const long long lines = std::max<long long>(int_key(w, "lines", 3), 1);
    return stacked(w, "lines", lines, m_.load_bar_h + m_.spacer);
  }

  long long list(const Where& w) {
    const long long rs = std::max<long long>(int_key(w, "rowSpacing", 0), 0);
    at_most(w, "rowSpacing", rs, m_.H, "px, the screen height");
    const long long rows = std::max<long long>(int_key(w, "rows", m_.li_rows), 1);
    const long long h = stacked(w, "rows", rows, m_.li_h + rs);
    // Every item is measured, though only the first shapes the template.
    stacked(w, "items", (long long)list_size(w.blk, "items"), m_.li_h);
    return h;
  }

  long long wheel(const Where& w) {
    const Json& cols = get(w.blk, "columns");
    long long n = 1;
    if (cols.is_array()) {
      n = (long long)cols.size();
      for (size_t i = 0; i < cols.size(); ++i)
        if (cols[i].is_array())
          stacked(w, cat("columns[", i, "]").c_str(), (long long)cols[i].size(), m_.wheel_h);
    } else if (cols.is_number() && truthy(cols)) {
      n = int_key(w, "columns", 1);
    }
    // Each column is at least two check boxes wide, with a gap between columns.
    const long long col_w = 2LL * m_.cb, gap = m_.spacer2;
    at_most(w, "columns", n, (m_.W + gap) / (col_w + gap),
            cat("columns of ", col_w, " px fit on a screen ", m_.W, " px wide"));
    const long long rows = std::max<long long>(int_key(w, "rows", m_.wheel_rows), 3);
    return stacked(w, "rows", rows, m_.wheel_h);
  }

  long long grid(const Where& w) {
    const long long cols = int_key(w, "cols", 4);
    const long long n = (long long)list_size(w.blk, "items");
    if (cols < 1) return 0;  // the builder refuses it
    return stacked(w, "items", n, (m_.grid_tile_h + m_.grid_row_gap) / cols);
  }

  long long radio(const Where& w) {
    int_key(w, "selected", 0);
    return stacked(w, "options", (long long)list_size(w.blk, "options"), m_.opt_h);
  }

  void tabs(const Where& w) {
    int_key(w, "selected", 0);
    at_most(w, "items", (long long)list_size(w.blk, "items"), m_.content_w / kMinSlotPx,
            cat("tabs of ", kMinSlotPx, " px fit in ", m_.content_w, " px"));
  }

  void chart(const Where& w) {
    const long long plot_w = m_.content_w - 2LL * m_.pad_l;
    const long long most = std::max<long long>(plot_w / kMinSlotPx, 2);
    const std::string reason = cat("slots of ", kMinSlotPx, " px fit in the plot's ", plot_w, " px");
    at_most(w, "data", (long long)list_size(w.blk, "data"), most, reason);
    at_most(w, "labels", (long long)list_size(w.blk, "labels"), most, reason);
    const Json& data = get(w.blk, "data");
    if (!data.is_array()) return;
    for (size_t i = 0; i < data.size(); ++i) {
      double v = 0;
      try {
        v = float_of(data[i]);
      } catch (const InputError&) {
        continue;  // the builder names the value that is no number
      }
      if (!(std::fabs(v) <= kMaxChartValue))
        w.fail(cat("data[", i, "] ", literal_form(data[i]), " must be a finite number of magnitude at most 1e15"));
    }
  }

  // A progress is a share of 100: checked before it becomes an integer.
  void progress(const Where& w) {
    const Json& v = get(w.blk, "progress");
    if (!truthy(v)) return;
    double p = 0;
    try {
      p = float_of(v);
    } catch (const InputError& e) {
      w.fail(cat("progress: ", e.what()));
    }
    if (!(p >= 0 && p <= 100)) w.fail(cat("progress ", literal_form(v), " must lie between 0 and 100"));
    int_key(w, "progress", 0);
  }

  const Metrics& m_;
  const long long room_;
};

}  // namespace

bool is_identifier(const std::string& s) {
  const auto* p = reinterpret_cast<const uint8_t*>(s.data());
  const int32_t n = (int32_t)std::min<size_t>(s.size(), 1 << 20);
  if (n == 0 || (size_t)n != s.size()) return false;
  int32_t i = 0;
  int count = 0;
  while (i < n) {
    UChar32 c;
    U8_NEXT(p, i, n, c);
    if (c < 0 || ++count > kMaxIdentifierLength) return false;  // ill-formed UTF-8 or too long
    const int8_t cat_ = u_charType(c);
    const bool letter = u_hasBinaryProperty(c, UCHAR_XID_START);
    const bool mark = cat_ == U_NON_SPACING_MARK || cat_ == U_COMBINING_SPACING_MARK;
    const bool digit = cat_ == U_DECIMAL_DIGIT_NUMBER;
    if (count == 1 ? !(letter || c == '_') : !(letter || mark || digit || c == '_')) return false;
  }
  return true;
}

void check_page_limits(const Json& page, const std::string& page_name, const Metrics& m) {
  if (!is_identifier(page_name))
    throw InputError(cat("page name ", literal_form(Json(page_name)),
                         " is not an identifier (letters, digits and underscores, not starting with a digit, at most ",
                         kMaxIdentifierLength, " characters); it names the layout and logic files, never a path"));
  PageCheck(m).page(page);
}

}  // namespace ub
