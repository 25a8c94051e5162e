// Test set-up of whole pages and of builders called one by one: a Composer of a spec,
// and a bench that holds a page's context and owners without running the flow.
#pragma once

#include <memory>
#include <string>

#include <sstream>
#include <vector>

#include "assets/registry.h"
#include "compose.h"
#include "kinds/build.h"
#include "logic/logic.h"
#include "kinds/registry.h"
#include "page/page_records.h"
#include "test_support.h"

namespace ubtest {

inline std::unique_ptr<ub::Composer> composer(Json spec, const std::string& page = "main",
                                              const ub::Installation& inst = installation()) {
  return std::make_unique<ub::Composer>(std::move(spec), page, inst);
}

// A page composed in memory as a run composes it, with no child process: the layout
// file's text, the logic skeleton, and the pictures drawn in name order with the report's
// lines of drawing.
struct Composed {
  std::unique_ptr<ub::Composer> composer;
  ub::LayoutText layout;
  std::string logic;
  std::vector<ub::Picture> pictures;
  std::string drawing_lines;
};

inline Composed compose_page(Json spec, const std::string& page = "main", bool draw = true,
                             const ub::Installation& inst = installation()) {
  Composed c;
  c.composer = composer(std::move(spec), page, inst);
  c.layout = c.composer->layout();
  c.logic = ub::logic_text(c.layout.controls);
  if (draw) {
    std::ostringstream log;
    c.pictures = ub::render_registry(c.composer->pictures().all(), inst.icons, log);
    c.drawing_lines = log.str();
  }
  return c;
}

// The page context and the owners of one page; `bd` is what a builder gets. The page's
// blocks are read into `records` as a run reads them.
struct PageBench {
  Json page;
  ub::PageRecords records;
  ub::Notes notes;
  ub::PageContext ctx;
  const ub::Metrics& m;
  ub::Pictures pictures;
  ub::Controls controls;
  ub::FlowState flow;
  ub::RowFamilyState rows;
  ub::PageData data;
  ub::Build bd;

  explicit PageBench(Json spec, const std::string& page_name = "main",
                     const ub::Installation& inst = installation())
      : page(ub::take_page(spec)),
        records(ub::read_page_records(page, inst.blocks, ub::block_kinds())),
        ctx(ub::build_page_context(spec, page, records, page_name, inst, notes)),
        m(ctx.m),
        pictures(inst.icons, ctx.page_name),
        controls(ctx, pictures),
        rows(ctx.m, flow),
        bd{ctx, controls, pictures, notes, rows, flow, data} {}

  // Settles the row family, as a run does before any block.
  void scan() { rows.scan_row_family(records.blocks); }
  // The record of the i-th block of the page.
  const ub::BlockRecord& block(size_t i) const { return records.blocks.at(i); }
};

// One block read as a page reads its first block (number 1, place page.blocks[0]),
// with what its record points into.
struct OneBlock {
  Json page;
  ub::PageRecords records;
  explicit OneBlock(Json blk, const ub::Installation& inst = installation())
      : page(object_of("blocks", Json::array({std::move(blk)}))),
        records(ub::read_page_records(page, inst.blocks, ub::block_kinds())) {}
  OneBlock(const OneBlock&) = delete;  // the record points into this page
  OneBlock& operator=(const OneBlock&) = delete;
  const ub::BlockRecord& operator*() const { return records.blocks.at(0); }
  const ub::BlockRecord* operator->() const { return &records.blocks.at(0); }
};

// A block numbered by hand, as builders get it: of the kind its "type" names, read against
// the checkout's library, with the number `seq`, and "B" + seq as its generated name (its
// own `name` when it has one). No place: stops carry no place line.
class Named {
 public:
  Named(Json blk, int seq) : raw_(std::move(blk)) {
    const ub::BlockKind* k = ub::block_kinds().of(raw_);
    if (k) keys_ = ub::kind_keys(installation().blocks.at(k->type));
    rec_ = ub::read_record(raw_, k, k ? &keys_ : nullptr);
    rec_.seq = seq;
    rec_.named = ub::truthy(ub::get(raw_, "name"));
    rec_.name = rec_.named ? ub::to_text(raw_["name"]) : "B" + std::to_string(seq);
  }
  Named(const Named&) = delete;
  Named& operator=(const Named&) = delete;
  operator const ub::BlockRecord&() const { return rec_; }
  const ub::BlockRecord& operator*() const { return rec_; }

 private:
  Json raw_;
  ub::KindKeys keys_;
  ub::BlockRecord rec_;
};

inline std::unique_ptr<PageBench> bench(int w, int h, Json blocks = Json::array()) {
  return std::make_unique<PageBench>(page_spec(w, h, std::move(blocks)));
}

}  // namespace ubtest
