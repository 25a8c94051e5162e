// Test set-up of whole pages and of builders called one by one: a Composer of a spec,
// and a bench that holds a page's context and owners without running the flow.
#pragma once

#include <memory>
#include <string>

#include "compose.h"
#include "kinds/build.h"
#include "page/naming.h"
#include "test_support.h"

namespace ubtest {

inline std::unique_ptr<ub::Composer> composer(Json spec, const std::string& page = "main",
                                              const ub::Installation& inst = installation()) {
  return std::make_unique<ub::Composer>(std::move(spec), page, inst);
}

// The page context and the owners of one page; `bd` is what a builder gets.
struct PageBench {
  Json page;
  ub::Notes notes;
  ub::PageContext ctx;
  const ub::Metrics& m;
  ub::Pictures pictures;
  ub::Controls controls;
  ub::FlowState flow;
  ub::RowFamilyState rows;
  ub::Build bd;

  explicit PageBench(Json spec, const std::string& page_name = "main")
      : page(ub::take_page(spec)),
        ctx(ub::build_page_context(spec, page, page_name, installation(), notes)),
        m(ctx.m),
        pictures(notes, ctx.page_name),
        controls(ctx, pictures),
        rows(ctx.m, flow),
        bd{ctx, controls, pictures, notes, rows, flow} {}

  // Names the blocks and settles the row family, as a run does before any block.
  void name_and_scan() {
    ub::name_tree(flow, page["blocks"]);
    rows.scan_row_family(page);
  }
};

inline std::unique_ptr<PageBench> bench(int w, int h, Json blocks = Json::array()) {
  return std::make_unique<PageBench>(page_spec(w, h, std::move(blocks)));
}

}  // namespace ubtest
