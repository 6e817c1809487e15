#pragma once

#include <string>

namespace lapvane {

/// A document on paper, page by page. Positions are centimetres from the page's top left corner,
/// whatever margins the device has. All text is Windows-1252. A device or a file that fails raises
/// error 482.
class Printer {
 public:
    virtual ~Printer() = default;

    /// The page that the positions are meant for, centimetres. On paper that is smaller everything
    /// is drawn smaller, in its middle.
    virtual void Sheet(double width, double height) = 0;
    /// Size of the texts that follow, in points.
    virtual void FontSize(double points) = 0;
    virtual void FontBold(bool bold) = 0;
    virtual void Line(double x1, double y1, double x2, double y2) = 0;
    /// One line of text; (x, y) is its top left corner. A text that would reach past `right` is
    /// condensed a little or, where that is not enough, cut off with an ellipsis.
    virtual void Text(double x, double y, double right, const std::string& text) = 0;
    /// What follows goes on a page of its own. A page on which nothing is drawn is not printed.
    virtual void NewPage() = 0;
    /// Hands the document over; nothing may follow. A document without a page prints nothing.
    virtual void EndDoc() = 0;
};

}  // namespace lapvane
