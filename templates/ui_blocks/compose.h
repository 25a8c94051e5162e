// Composer: one page run. It takes the page out of the spec, builds the page context,
// owns what building changes (notes, pictures, controls, the flow and the row family),
// runs the flow, and gives the driver the checked layout, the pictures and the notes.
#pragma once

#include <string>

#include "assets/pictures.h"
#include "controls/controls.h"
#include "controls/layout_stream.h"
#include "kinds/build.h"
#include "kinds/flow_state.h"
#include "page/page_records.h"
#include "page/page_start.h"
#include "rows/row_family.h"
#include "spec/notes.h"
#include "spec/page_context.h"

namespace ub {

class Composer {
 public:
  // `earlier`: the pictures of the sizes composed before this one in the same run, whose
  // names this page's pictures share (the same picture) or avoid (a different one).
  // `project_root`: the project the page is composed into, where the pictures the page
  // ships under resources/ are read ("" for none).
  Composer(Json spec, std::string page_name, const Installation& inst, const AssetMap* earlier = nullptr,
           std::string project_root = {});
  // The page reads the installation while it lives: never a temporary one.
  Composer(Json spec, std::string page_name, Installation&& inst, const AssetMap* earlier = nullptr,
           std::string project_root = {}) = delete;
  Composer(const Composer&) = delete;  // the owners refer to each other
  Composer& operator=(const Composer&) = delete;

  // Builds the page's root sequence (once: the layout calls reuse it).
  const NodeList& run();
  // The layout file of the page with the index of its records, refused (StopError) on
  // duplicate captions, uneven row gaps or characters outside the engine's font.
  LayoutText layout();
  Json document();  // the same layout as a JSON value
  // The layout as layout() checks it; its text left out when it can be streamed.
  CheckedLayout checked_layout();

  const PageContext& context() const { return ctx_; }
  const Json& page() const { return page_; }
  const PageRecords& records() const { return records_; }  // the page's blocks as read at its start
  const Notes& notes() const { return notes_; }
  void add_note(std::string line) { notes_.add(std::move(line)); }  // from the driver, after the run
  const Pictures& pictures() const { return pictures_; }
  const RowFamilyState& row_family() const { return rows_; }
  // Every list row and wheel value of the page, for the data header (after run()).
  const PageData& data() const { return data_; }
  const EmitLayer& required_keys() const { return required_keys_; }
  const NodeList& root() const { return root_; }
  int content_h() const { return content_h_; }
  int control_count() const { return control_count_; }

 private:
  Json page_;
  PageRecords records_;
  const EmitLayer& required_keys_;
  Notes notes_;
  PageContext ctx_;
  Pictures pictures_;
  Controls controls_;
  FlowState flow_;
  RowFamilyState rows_;
  PageData data_;
  Build bd_;
  NodeList root_;
  bool ran_ = false;
  int content_h_ = 0;
  int control_count_ = 0;
};

}  // namespace ub
