// "compose serve": composes the page, serves a live preview on 127.0.0.1 and recomposes on
// every save of the spec or the block library until Ctrl-C.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace serve {

// args after "serve"; blocks_dir: the block library to watch; compose_exe: the program
// that composes each size. Returns the exit status.
int serve_main(const std::vector<std::string>& args, const std::string& blocks_dir, const std::string& compose_exe,
               std::ostream& out, std::ostream& err);

}  // namespace serve
