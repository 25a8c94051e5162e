// The control factories of one page: every control a builder makes comes from here.
// They own what making controls changes: the running number of subitems and radio
// buttons, and the origin that container rows are placed against.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "assets/pictures.h"
#include "controls/node.h"
#include "spec/page_context.h"

namespace ub {

// The fields of an edit box a block gives: texts as given (a number stays a number).
struct EditFields {
  const Json& hint;
  const Json& text;
  long long type = 0;
  bool password = false;
  const Json& password_char;
};

class Controls {
 public:
  Controls(const PageContext& page, Pictures& pictures) : page(page), pictures(pictures), m(page.m) {}

  // Screen coordinates relative to the current origin, rounded half to even.
  Pos box(double x, double y, double w, double h) const;
  std::pair<int, int> xy(double x, double y) const;
  std::pair<double, double> current_origin() const { return origin; }
  // The last shared numbers given to a list-item part and to a radio button (ids from
  // their own bases), for the capacity of their id ranges.
  int last_subitem() const { return last_subitem_; }
  int last_radiobutton() const { return last_radiobutton_; }
  void set_origin(std::pair<double, double> o) { origin = o; }

  NodePtr text(const std::string& caption, Pos pos, int fs, long long color, const std::string& txt = "",
               const std::string& bg = "", int align = 36, bool bold = false, bool touchable = false);
  NodePtr button(const std::string& caption, Pos pos, const std::string& bg = "", std::optional<int> fs = {},
                 std::optional<long long> color = {}, int align = 37, const std::string& txt = "",
                 bool touchable = true);
  // A decoration: text with empty txt, align 37, the picture in bg, fs = m.fs.b2 by default.
  NodePtr deco(const std::string& caption, Pos pos, long long color, const std::string& bg, int fs = 0);
  Json subitem(const std::string& caption, Pos pos, int fs, long long color, const std::string& txt = "",
               const std::string& pic = "", int align = 36, bool touchable = true);
  // The separator under a row; `id` is the row's number or own name.
  NodePtr sep_node(int x, int y, int w, const std::string& id);
  NodePtr make_seekbar(const std::string& caption, Pos bx, long long progress, bool readonly = false);
  NodePtr make_edittext(const std::string& caption, Pos bx, const EditFields& f);
  NodePtr make_checkbox(const std::string& caption, Pos bx, bool checked);
  NodePtr make_radiogroup(const std::string& caption, Pos bx, const Json& opts, long long selected,
                          const std::string& name);

 private:
  // The tokens and pictures the factories draw on.
  std::string tok_color(const std::string& name) const { return page.tok_color(name); }
  Rgba tcol(const std::string& name) const { return page.tcol(name); }
  long long col(const std::string& name) const { return page.col(name); }
  template <class... A>
  std::string shape(A&&... a) { return pictures.shape(std::forward<A>(a)...); }
  template <class... A>
  std::string bar(A&&... a) { return pictures.bar(std::forward<A>(a)...); }
  template <class... A>
  std::string mark(A&&... a) { return pictures.mark(std::forward<A>(a)...); }

  const PageContext& page;
  Pictures& pictures;
  const Metrics& m;
  int sub_ = 0;
  int last_subitem_ = 0, last_radiobutton_ = 0;
  std::pair<double, double> origin{0, 0};
};

// The number of nodes of the tree.
size_t count_controls(const NodeList& nodes);

}  // namespace ub
