#pragma once

#include <functional>
#include <string>
#include <vector>

namespace lapvane::manual {

struct Heading {
    int Level = 1;
    std::string Id;
    std::string Text;  ///< plain
};

struct Picture {
    std::string File;  ///< relative to the page
    int Width = 0;     ///< pixels of its own; 0: unknown
    int Height = 0;
};

/// A page out of Markdown, and what can be looked for in it.
struct Page {
    std::string Html;
    std::vector<Heading> Headings;
    /// Text of the part behind each heading, plain, in one line.
    std::vector<std::string> Parts;
};

/// What the page asks of the manual while it is made.
struct Resolver {
    std::function<Picture(const std::string& name)> FindPicture;
    std::function<std::string(const std::string& target)> ResolveLink;
    std::function<void(int line, const std::string& what)> Fault;
};

/// Headings are to end in "{#id}"; a paragraph that is one picture becomes a figure.
Page Render(const std::string& markdown, const Resolver& resolver);

/// A text between tags or in an attribute.
std::string EscapedHtml(std::string_view text);

}  // namespace lapvane::manual
