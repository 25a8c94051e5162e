#include "gen_res/png_writer.h"

#include <libdeflate.h>
#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace gen_res {

namespace {

// ---- What the pixels allow ----

uint32_t pack(const uint8_t* p) { return (uint32_t)p[0] << 24 | (uint32_t)p[1] << 16 | (uint32_t)p[2] << 8 | p[3]; }

// Open-addressing set of up to 256 RGBA colours, each mapped to its palette index.
class ColourTable {
 public:
  // False once a 257th colour is seen.
  bool add(uint32_t c) {
    size_t i = slot(c);
    if (used_[i]) return true;
    if (colours_.size() == 256) return false;
    used_[i] = 1, keys_[i] = c;
    colours_.push_back(c);
    return true;
  }
  const std::vector<uint32_t>& colours() const { return colours_; }
  void set_index(uint32_t c, uint8_t idx) { index_[slot(c)] = idx; }
  uint8_t index(uint32_t c) const { return index_[slot(c)]; }

 private:
  static constexpr size_t kSlots = 1024;  // at most a quarter full
  size_t slot(uint32_t c) const {
    size_t i = (c * 2654435761u) >> 22;
    while (used_[i] && keys_[i] != c) i = (i + 1) & (kSlots - 1);
    return i;
  }
  uint8_t used_[kSlots] = {};
  uint32_t keys_[kSlots] = {};
  uint8_t index_[kSlots] = {};
  std::vector<uint32_t> colours_;
};

struct Traits {
  bool opaque = true, grey = true;
  bool few_colours = true;  // at most 256 colours
  int grey_depth = 1;       // lowest depth holding every grey value exactly
  ColourTable table;
};

// Lowest of 1, 2, 4, 8 bits whose levels (multiples of 255, 85, 17, 1) hold v.
int grey_depth_of(int v) { return v % 255 == 0 ? 1 : v % 85 == 0 ? 2 : v % 17 == 0 ? 4 : 8; }

void analyse(const Image& img, Traits& t) {
  size_t row_bytes = (size_t)img.w * 4;
  uint32_t last = 0;
  bool have_last = false;
  for (int y = 0; y < img.h; ++y) {
    const uint8_t* p = img.at(0, y);
    if (y > 0 && std::memcmp(p, p - row_bytes, row_bytes) == 0) continue;  // repeated rows are common
    for (int x = 0; x < img.w; ++x, p += 4) {
      uint32_t raw;
      std::memcpy(&raw, p, 4);
      if (have_last && raw == last) continue;  // so are runs
      have_last = true, last = raw;
      if (p[3] != 255) t.opaque = false;
      if (t.grey && (p[0] != p[1] || p[1] != p[2])) t.grey = false;
      if (t.grey) t.grey_depth = std::max(t.grey_depth, grey_depth_of(p[0]));
      if (t.few_colours) t.few_colours = t.table.add(pack(p));
      if (!t.few_colours && !t.grey && !t.opaque) return;  // RGBA is all that is left
    }
  }
}

bool holds(const Traits& t, PngForm f) {
  switch (f) {
    case PngForm::palette: return t.few_colours;
    case PngForm::grey: return t.grey && t.opaque;
    case PngForm::grey_alpha: return t.grey;
    case PngForm::rgb: return t.opaque;
    case PngForm::rgba: return true;
  }
  return false;
}

// Up to this many pixels a picture is small: its palette's size weighs.
constexpr size_t kSmallPixels = 4096;

// ---- Scanlines ----

struct Layout {
  PngForm form;
  int depth;      // bits per sample
  int channels;   // samples per pixel
  size_t stride;  // bytes per row, without the filter byte
  int bpp;        // filter distance in bytes (at least 1)
};

Layout layout_of(PngForm f, int depth, int w) {
  int ch = f == PngForm::grey_alpha ? 2 : f == PngForm::rgb ? 3 : f == PngForm::rgba ? 4 : 1;
  size_t bits = (size_t)w * ch * depth;
  return {f, depth, ch, (bits + 7) / 8, std::max(1, ch * depth / 8)};
}

int palette_depth(size_t n) { return n <= 2 ? 1 : n <= 4 ? 2 : n <= 16 ? 4 : 8; }

// Palette order: by alpha, then colour, so the transparency list ends at the first
// opaque entry and similar alphas get near indices.
std::vector<uint32_t> palette_order(ColourTable& table) {
  std::vector<uint32_t> pal = table.colours();
  auto key = [](uint32_t c) { return (c & 0xff) << 24 | c >> 8; };
  std::sort(pal.begin(), pal.end(), [&](uint32_t a, uint32_t b) { return key(a) < key(b); });
  for (size_t i = 0; i < pal.size(); ++i) table.set_index(pal[i], (uint8_t)i);
  return pal;
}

// Unfiltered rows of the image in the given layout, one after the other.
std::vector<uint8_t> raw_rows(const Image& img, const Layout& L, const ColourTable& table) {
  std::vector<uint8_t> out(L.stride * img.h, 0);
  for (int y = 0; y < img.h; ++y) {
    const uint8_t* s = img.at(0, y);
    uint8_t* d = &out[L.stride * y];
    if (y > 0 && std::memcmp(s, img.at(0, y - 1), (size_t)img.w * 4) == 0) {
      std::memcpy(d, d - L.stride, L.stride);
      continue;
    }
    switch (L.form) {
      case PngForm::rgba: std::memcpy(d, s, (size_t)img.w * 4); break;
      case PngForm::rgb:
        for (int x = 0; x < img.w; ++x, s += 4, d += 3) d[0] = s[0], d[1] = s[1], d[2] = s[2];
        break;
      case PngForm::grey_alpha:
        for (int x = 0; x < img.w; ++x, s += 4, d += 2) d[0] = s[0], d[1] = s[3];
        break;
      case PngForm::grey:
      case PngForm::palette: {
        int per_byte = 8 / L.depth;
        uint32_t last = 0;
        int last_v = -1;
        for (int x = 0; x < img.w; ++x, s += 4) {
          int v;
          if (L.form == PngForm::grey) {
            v = s[0] / (255 / ((1 << L.depth) - 1));
          } else {
            uint32_t c = pack(s);
            if (last_v < 0 || c != last) last = c, last_v = table.index(c);
            v = last_v;
          }
          int shift = 8 - L.depth * (x % per_byte + 1);
          d[x / per_byte] |= (uint8_t)(v << shift);
        }
        break;
      }
    }
  }
  return out;
}

// ---- Filters ----

enum Filter : uint8_t { kNone, kSub, kUp, kAverage, kPaeth };

uint8_t paeth(int a, int b, int c) {
  int p = a + b - c, pa = std::abs(p - a), pb = std::abs(p - b), pc = std::abs(p - c);
  return (uint8_t)(pa <= pb && pa <= pc ? a : pb <= pc ? b : c);
}

void filter_row(Filter f, const uint8_t* cur, const uint8_t* prev, size_t n, size_t bpp, uint8_t* out) {
  size_t lead = std::min(bpp, n);  // bytes without a left neighbour
  switch (f) {
    case kNone: std::memcpy(out, cur, n); return;
    case kSub:
      std::memcpy(out, cur, lead);
      for (size_t i = lead; i < n; ++i) out[i] = (uint8_t)(cur[i] - cur[i - bpp]);
      return;
    case kUp:
      for (size_t i = 0; i < n; ++i) out[i] = (uint8_t)(cur[i] - prev[i]);
      return;
    case kAverage:
      for (size_t i = 0; i < lead; ++i) out[i] = (uint8_t)(cur[i] - prev[i] / 2);
      for (size_t i = lead; i < n; ++i) out[i] = (uint8_t)(cur[i] - (cur[i - bpp] + prev[i]) / 2);
      return;
    case kPaeth:
      for (size_t i = 0; i < lead; ++i) out[i] = (uint8_t)(cur[i] - prev[i]);
      for (size_t i = lead; i < n; ++i) out[i] = (uint8_t)(cur[i] - paeth(cur[i - bpp], prev[i], prev[i - bpp]));
      return;
  }
}

// Sum of the filtered bytes read as signed values: the usual estimate of how well a row packs.
size_t row_cost(const uint8_t* r, size_t n) {
  size_t s = 0;
  for (size_t i = 0; i < n; ++i) s += r[i] < 128 ? r[i] : 256 - r[i];
  return s;
}

enum class Strategy { none, up, adaptive };

// Filter-byte-prefixed rows. Adaptive takes, per row, the filter of least cost; a row
// equal to the one above always gets Up, which makes it all zeros.
std::vector<uint8_t> filtered(const std::vector<uint8_t>& raw, const Layout& L, int h, Strategy s) {
  size_t n = L.stride;
  std::vector<uint8_t> out((n + 1) * h), trial(n);
  for (int y = 0; y < h; ++y) {
    const uint8_t* cur = &raw[n * y];
    const uint8_t* prev = y > 0 ? cur - n : nullptr;
    uint8_t* d = &out[(n + 1) * y];
    Filter f = s == Strategy::up && prev ? kUp : kNone;
    if (s == Strategy::adaptive) {
      if (prev && std::memcmp(cur, prev, n) == 0) {
        f = kUp;
      } else {
        size_t best = SIZE_MAX;
        for (Filter c : {kNone, kSub, kUp, kAverage, kPaeth}) {
          if (!prev && c != kNone && c != kSub) continue;
          filter_row(c, cur, prev, n, L.bpp, trial.data());
          size_t cost = row_cost(trial.data(), n);
          if (cost < best) best = cost, f = c;
        }
      }
    }
    d[0] = f;
    filter_row(f, cur, prev, n, L.bpp, d + 1);
  }
  return out;
}

// ---- Compression and chunks ----

// Large candidates are ranked by a fast compression; only the winner gets the strong one.
constexpr int kTrialLevel = 1, kFinalLevel = 6;

struct CompressorFree {
  void operator()(libdeflate_compressor* c) const { libdeflate_free_compressor(c); }
};

// Size of the zlib stream only, or the stream itself when out is given.
size_t zlib_compress(const std::vector<uint8_t>& data, int level, std::string* out = nullptr) {
  using Compressor = std::unique_ptr<libdeflate_compressor, CompressorFree>;
  thread_local Compressor trial(libdeflate_alloc_compressor(kTrialLevel));
  thread_local Compressor final(libdeflate_alloc_compressor(kFinalLevel));
  libdeflate_compressor* comp = level == kTrialLevel ? trial.get() : final.get();
  if (!comp) throw std::runtime_error("PNG encoding: out of memory");
  thread_local std::vector<uint8_t> buf;
  buf.resize(std::max(buf.size(), libdeflate_zlib_compress_bound(comp, data.size())));
  size_t n = libdeflate_zlib_compress(comp, data.data(), data.size(), buf.data(), buf.size());
  if (n == 0) throw std::runtime_error("PNG encoding: compression failed");
  if (out) out->assign((const char*)buf.data(), n);
  return n;
}

void put32(std::string& s, uint32_t v) {
  char b[4] = {(char)(v >> 24), (char)(v >> 16), (char)(v >> 8), (char)v};
  s.append(b, 4);
}

void chunk(std::string& png, const char* type, const std::string& body) {
  put32(png, (uint32_t)body.size());
  size_t start = png.size();
  png.append(type, 4);
  png += body;
  put32(png, libdeflate_crc32(0, png.data() + start, png.size() - start));
}

std::string assemble(int w, int h, const Layout& L, const std::vector<uint32_t>& pal, const std::string& idat) {
  static const char sig[8] = {'\x89', 'P', 'N', 'G', '\r', '\n', '\x1a', '\n'};
  std::string png(sig, 8);
  std::string ihdr;
  put32(ihdr, (uint32_t)w);
  put32(ihdr, (uint32_t)h);
  uint8_t type = L.form == PngForm::palette      ? 3
                 : L.form == PngForm::grey       ? 0
                 : L.form == PngForm::grey_alpha ? 4
                 : L.form == PngForm::rgb        ? 2
                                                 : 6;
  ihdr += (char)L.depth;
  ihdr += (char)type;
  ihdr.append(3, '\0');  // deflate, adaptive filtering, no interlace
  chunk(png, "IHDR", ihdr);
  if (L.form == PngForm::palette) {
    std::string plte, trns;
    for (uint32_t c : pal) {
      plte += (char)(c >> 24), plte += (char)(c >> 16), plte += (char)(c >> 8);
      if ((c & 0xff) != 255) trns += (char)(c & 0xff);
    }
    chunk(png, "PLTE", plte);
    if (!trns.empty()) chunk(png, "tRNS", trns);
  }
  chunk(png, "IDAT", idat);
  chunk(png, "IEND", "");
  return png;
}

// Strategies worth a trial for a form: palette indices do best unfiltered, since
// neighbouring indices need not be neighbouring colours.
std::vector<Strategy> strategies_for(const Layout& L) {
  if (L.form == PngForm::palette) return {Strategy::none};
  return {Strategy::none, Strategy::up, Strategy::adaptive};
}

// One way of writing the picture: a form, its palette and its filtered rows.
struct Candidate {
  Layout layout;
  std::vector<uint32_t> palette;
  std::vector<uint8_t> rows;
  size_t overhead() const { return palette.size() * 4 + 24; }  // PLTE, tRNS and their headers
};

// Every strategy's rows of every form given; the forms must hold the pixels.
std::vector<Candidate> candidates(const Image& img, Traits& t, const std::vector<PngForm>& forms) {
  std::vector<Candidate> out;
  for (PngForm form : forms) {
    std::vector<uint32_t> pal;
    int depth = 8;
    if (form == PngForm::palette) {
      pal = palette_order(t.table);
      depth = palette_depth(pal.size());
    } else if (form == PngForm::grey) {
      depth = t.grey_depth;
    }
    Layout L = layout_of(form, depth, img.w);
    std::vector<uint8_t> raw = raw_rows(img, L, t.table);
    for (Strategy s : strategies_for(L)) out.push_back({L, pal, filtered(raw, L, img.h, s)});
  }
  return out;
}

std::string encode_best(const Image& img, Traits& t, const std::vector<PngForm>& forms) {
  std::vector<Candidate> cands = candidates(img, t, forms);
  // Small pictures are cheap to compress: each candidate gets the strong level and the
  // smallest is kept. Larger ones are ranked by the fast level first.
  bool small = (size_t)img.w * img.h <= kSmallPixels;
  int rank_level = small ? kFinalLevel : kTrialLevel;
  size_t best = 0, best_size = SIZE_MAX;
  std::string idat, best_idat;
  for (size_t i = 0; i < cands.size() && cands.size() > 1; ++i) {
    size_t size = zlib_compress(cands[i].rows, rank_level, small ? &idat : nullptr) + cands[i].overhead();
    if (size < best_size) best_size = size, best = i, best_idat.swap(idat);
  }
  if (!small || cands.size() == 1) zlib_compress(cands[best].rows, kFinalLevel, &best_idat);
  return assemble(img.w, img.h, cands[best].layout, cands[best].palette, best_idat);
}

// A PNG holds at least one pixel each way: a w x 0 picture (an empty card) is written
// w x 1, transparent, so that it keeps its width.
const Image& nonempty(const Image& img, Image& spare) {
  if (img.w > 0 && img.h > 0) return img;
  spare = Image(std::max(img.w, 1), std::max(img.h, 1));
  return spare;
}

}  // namespace

std::string encode_png(const Image& img_in) {
  Image spare;
  const Image& img = nonempty(img_in, spare);
  Traits t;
  analyse(img, t);
  // A palette of at most 16 colours packs pixels into 4 bits or less, and no wider form
  // beats it then; grey at its lowest depth is never wider than the palette. On small
  // pictures the palette's own size (4 bytes a colour) can outweigh its gain, and grey
  // with alpha filters better than palette indices, so the wider form is tried there
  // too; on other large pictures only where there is no palette.
  std::vector<PngForm> forms;
  size_t colours = t.few_colours ? t.table.colours().size() : 257;
  if (t.few_colours) forms.push_back(PngForm::palette);
  if (t.grey && t.opaque) forms.push_back(PngForm::grey);
  bool small = (size_t)img.w * img.h <= kSmallPixels;
  if (colours > 256 || (colours > 16 && (small || t.grey)))
    forms.push_back(t.grey ? PngForm::grey_alpha : t.opaque ? PngForm::rgb : PngForm::rgba);
  return encode_best(img, t, forms);
}

std::string encode_png_fast(const Image& img_in) {
  Image spare;
  const Image& img = nonempty(img_in, spare);
  bool opaque = true;
  for (size_t i = 3; i < img.px.size() && opaque; i += 4) opaque = img.px[i] == 255;
  const Layout L = layout_of(opaque ? PngForm::rgb : PngForm::rgba, 8, img.w);
  std::vector<uint8_t> rows = filtered(raw_rows(img, L, ColourTable()), L, img.h, Strategy::up);
  // zlib's run-length strategy looks for repeats of the byte before only: a few times faster
  // than the fastest full search, and the Up filter turns the flat parts of a screen into
  // runs of zeros.
  z_stream z{};
  if (deflateInit2(&z, 1, Z_DEFLATED, 15, 8, Z_RLE) != Z_OK) throw std::runtime_error("PNG encoding: out of memory");
  std::string idat(deflateBound(&z, rows.size()), '\0');
  z.next_in = rows.data();
  z.avail_in = static_cast<uInt>(rows.size());
  z.next_out = reinterpret_cast<Bytef*>(idat.data());
  z.avail_out = static_cast<uInt>(idat.size());
  const int rc = deflate(&z, Z_FINISH);
  idat.resize(z.total_out);
  deflateEnd(&z);
  if (rc != Z_STREAM_END) throw std::runtime_error("PNG encoding: compression failed");
  return assemble(img.w, img.h, L, {}, idat);
}

std::string encode_png_as(const Image& img_in, PngForm form) {
  Image spare;
  const Image& img = nonempty(img_in, spare);
  Traits t;
  analyse(img, t);
  if (!holds(t, form)) throw std::invalid_argument("the pixels do not fit this PNG form");
  return encode_best(img, t, {form});
}

bool png_header_form(const std::string& png, PngForm& form, int& depth) {
  if (png.size() < 33 || png.compare(0, 8, "\x89PNG\r\n\x1a\n") != 0 || png.compare(12, 4, "IHDR") != 0)
    return false;
  depth = (uint8_t)png[24];
  switch ((uint8_t)png[25]) {
    case 0: form = PngForm::grey; return true;
    case 2: form = PngForm::rgb; return true;
    case 3: form = PngForm::palette; return true;
    case 4: form = PngForm::grey_alpha; return true;
    case 6: form = PngForm::rgba; return true;
  }
  return false;
}

Image decode_png(const std::string& png) {
  png_image pi;
  std::memset(&pi, 0, sizeof pi);
  pi.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&pi, png.data(), png.size()))
    throw std::runtime_error(std::string("cannot read PNG: ") + pi.message);
  pi.format = PNG_FORMAT_RGBA;
  Image img((int)pi.width, (int)pi.height);
  if (!png_image_finish_read(&pi, nullptr, img.px.data(), 0, nullptr)) {
    std::string msg = pi.message;
    png_image_free(&pi);
    throw std::runtime_error("cannot decode PNG: " + msg);
  }
  return img;
}

}  // namespace gen_res
