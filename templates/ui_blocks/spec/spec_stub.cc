#include "compose.h"
#include "spec/todo.h"
namespace ub {
int r4(double) { UB_TODO("r4"); }
int r4up(double) { UB_TODO("r4up"); }
double pick(double, double, double, const std::vector<double>&) { UB_TODO("pick"); }
Rgba rgba(const std::string&, int) { UB_TODO("rgba"); }
std::pair<int, int> text_min_size(const std::string&, double, int) { UB_TODO("text_min_size"); }
std::string row_field(const Json&, std::initializer_list<const char*>) { UB_TODO("row_field"); }
long long hex2int(const std::string&) { UB_TODO("hex2int"); }
int FontSizes::at(const std::string&) const { UB_TODO("FontSizes::at"); }
std::string FontSizes::plain_text() const { UB_TODO("FontSizes::plain_text"); }
Metrics build_metrics(int, int, const Json&) { UB_TODO("build_metrics"); }
Composer::Composer(Json, std::string) { UB_TODO("Composer"); }
std::map<std::string, Json> Composer::load_blocks_() const { UB_TODO("load_blocks"); }
std::string Composer::tok_color(const std::string&) const { UB_TODO("tok_color"); }
Rgba Composer::tcol(const std::string&, int) const { UB_TODO("tcol"); }
long long Composer::col(const std::string&) const { UB_TODO("col"); }
Json Composer::col_int() const { UB_TODO("col_int"); }
int Composer::text_box_w(const std::string&, double, int, double) const { UB_TODO("text_box_w"); }
std::pair<std::string, std::string> Composer::sem_color(const std::string&) const { UB_TODO("sem_color"); }
}  // namespace ub
