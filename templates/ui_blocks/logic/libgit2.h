// libgit2, loaded by the first merge that needs it instead of linked: loading it with the
// TLS and Kerberos libraries it links costs a process about 10 ms, which every run of
// compose would pay, and starting it reads the system's certificates.
#pragma once

#include <git2.h>

namespace ub {

// The functions the logic merge calls.
struct Libgit2 {
  decltype(&::git_merge_file) merge_file;
  decltype(&::git_merge_file_result_free) merge_file_result_free;
  decltype(&::git_diff_buffers) diff_buffers;
  decltype(&::git_error_last) error_last;
};

// Loaded and started once per process; throws std::runtime_error when it cannot be.
const Libgit2& libgit2();

}  // namespace ub
