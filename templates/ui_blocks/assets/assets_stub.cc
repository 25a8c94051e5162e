#include "compose.h"
#include "spec/todo.h"
namespace ub {
std::string Composer::shape(const std::string&, double, double, double, Rgba, std::optional<Rgba>, double) {
  UB_TODO("shape");
}
std::string Composer::chevron(const std::string&, double, double, Rgba) { UB_TODO("chevron"); }
std::string Composer::clip_shape(const std::string&, double, double, double, Rgba, double, double, double, double,
                                 int) { UB_TODO("clip_shape"); }
std::string Composer::bar(const std::string&, double, double, double, Rgba) { UB_TODO("bar"); }
std::string Composer::mark(const std::string&, double, double, double, Rgba, const std::string&, double,
                           std::optional<Rgba>, std::optional<Rgba>, double) { UB_TODO("mark"); }
std::string Composer::chart(const std::string&, double, double, const std::string&, const std::vector<double>&, Rgba,
                            Rgba, int) { UB_TODO("chart"); }
std::string Composer::glyph(const std::string&, const std::string&, double, Rgba, std::optional<std::pair<int, int>>,
                            std::optional<std::string>) { UB_TODO("glyph"); }
std::vector<std::string> Composer::emit_assets(const std::string&) { UB_TODO("emit_assets"); }
}  // namespace ub
