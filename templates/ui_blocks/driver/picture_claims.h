// Pictures of several pages in one project: one name never holds two different pictures.
// In project-file order the first page keeps a name; a later page whose picture of that
// name differs takes the first name "<stem>_<n>.png" (n = 2, 3, ...) that is free or
// already holds the same picture, and its layouts name that one instead.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace ub {

struct PagePictures {
  std::string page;
  std::map<std::string, std::string> pictures;  // name as the page drew it -> digest of the bytes
  std::map<std::string, std::string> renamed;   // filled: drawn name -> name written, where they differ
};

struct Clash {
  std::string picture, first_page, page, written_as;
};

// Fills each page's `renamed`, in order; returns every clash.
std::vector<Clash> assign_picture_names(std::vector<PagePictures>& pages);

// "x.png" -> "x_<n>.png".
std::string numbered_name(const std::string& name, int n);

// A layout's text with its picture references ("images/<name>") renamed, written again
// in the layout form.
std::string renamed_layout(const std::string& text, const std::map<std::string, std::string>& renamed);

}  // namespace ub
