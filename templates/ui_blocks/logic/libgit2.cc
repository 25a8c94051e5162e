#include "logic/libgit2.h"

#include <dlfcn.h>

#include <stdexcept>
#include <string>
#include <type_traits>

namespace ub {

namespace {

Libgit2 load() {
  // The library's file name as the build found it (UB_LIBGIT2_SONAME, from pkg-config).
  void* lib = ::dlopen(UB_LIBGIT2_SONAME, RTLD_NOW | RTLD_LOCAL);
  if (!lib)
    throw std::runtime_error(std::string("cannot load libgit2, which merges hand-edited logic files (") +
                             ::dlerror() + "); install libgit2 or run with --no-logic");
  auto find = [&](auto& fn, const char* name) {
    fn = reinterpret_cast<std::remove_reference_t<decltype(fn)>>(::dlsym(lib, name));
    if (!fn) throw std::runtime_error(std::string("libgit2 ") + UB_LIBGIT2_SONAME + " lacks " + name);
  };
  Libgit2 git;
  find(git.merge_file, "git_merge_file");
  find(git.merge_file_result_free, "git_merge_file_result_free");
  find(git.diff_buffers, "git_diff_buffers");
  find(git.error_last, "git_error_last");
  decltype(&::git_libgit2_init) init = nullptr;
  find(init, "git_libgit2_init");
  if (init() < 0) throw std::runtime_error("cannot start libgit2");
  return git;
}

}  // namespace

const Libgit2& libgit2() {
  static const Libgit2 git = load();  // a failed load throws and is tried again next time
  return git;
}

}  // namespace ub
