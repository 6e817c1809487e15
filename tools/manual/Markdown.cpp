#include "tools/manual/Markdown.h"

#include <cmark-gfm-core-extensions.h>
#include <cmark-gfm.h>

#include <cstdlib>
#include <memory>
#include <string_view>

namespace lapvane::manual {

namespace {

constexpr int kOptions = CMARK_OPT_UNSAFE | CMARK_OPT_VALIDATE_UTF8;  // its HTML is our own

bool IsBlock(cmark_node* node) {
    return (cmark_node_get_type(node) & CMARK_NODE_TYPE_MASK) == CMARK_NODE_TYPE_BLOCK;
}

std::string Plain(cmark_node* node) {
    std::string text;
    cmark_iter* walk = cmark_iter_new(node);
    while (cmark_iter_next(walk) != CMARK_EVENT_DONE) {
        cmark_node* at = cmark_iter_get_node(walk);
        switch (cmark_node_get_type(at)) {
            case CMARK_NODE_TEXT:
            case CMARK_NODE_CODE:
                if (cmark_iter_get_event_type(walk) == CMARK_EVENT_ENTER) {
                    text += cmark_node_get_literal(at);
                }
                break;
            case CMARK_NODE_SOFTBREAK:
            case CMARK_NODE_LINEBREAK:
                text += ' ';
                break;
            default:
                break;
        }
    }
    cmark_iter_free(walk);
    return text;
}

void CollectText(cmark_node* block, std::string& text) {
    if (!text.empty()) text += ' ';
    if (cmark_node_get_type(block) == CMARK_NODE_CODE_BLOCK) {
        text += cmark_node_get_literal(block);
    } else if (cmark_node* child = cmark_node_first_child(block);
               child != nullptr && IsBlock(child)) {
        for (; child != nullptr; child = cmark_node_next(child)) CollectText(child, text);
    } else {
        text += Plain(block);
    }
    for (char& c : text) {
        if (c == '\n') c = ' ';
    }
}

class Renderer {
 public:
    Renderer(const std::string& markdown, const Resolver& resolver) : ask_(resolver) {
        cmark_gfm_core_extensions_ensure_registered();
        cmark_parser* parser = cmark_parser_new(kOptions);
        cmark_parser_attach_syntax_extension(parser, cmark_find_syntax_extension("table"));
        cmark_parser_feed(parser, markdown.data(), markdown.size());
        root_ = cmark_parser_finish(parser);
        cmark_parser_free(parser);
    }
    ~Renderer() { cmark_node_free(root_); }
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    Page Run() {
        for (cmark_node* block = cmark_node_first_child(root_); block != nullptr;) {
            cmark_node* const next = cmark_node_next(block);
            if (cmark_node_get_type(block) == CMARK_NODE_HEADING) {
                HeadingBlock(block);
            } else if (!page_.Parts.empty()) {
                CollectText(block, page_.Parts.back());
            }
            block = next;
        }
        cmark_iter* walk = cmark_iter_new(root_);
        std::vector<cmark_node*> pictures;
        while (cmark_iter_next(walk) != CMARK_EVENT_DONE) {
            if (cmark_iter_get_event_type(walk) != CMARK_EVENT_ENTER) continue;
            cmark_node* const node = cmark_iter_get_node(walk);
            if (cmark_node_get_type(node) == CMARK_NODE_LINK) {
                const std::string to = ask_.ResolveLink(cmark_node_get_url(node));
                cmark_node_set_url(node, to.c_str());
            } else if (cmark_node_get_type(node) == CMARK_NODE_IMAGE) {
                pictures.push_back(node);
            }
        }
        cmark_iter_free(walk);
        for (cmark_node* picture : pictures) Figure(picture);
        char* html = cmark_render_html(root_, kOptions, nullptr);
        page_.Html = html;
        std::free(html);
        return std::move(page_);
    }

 private:
    void HeadingBlock(cmark_node* block) {
        Heading heading;
        heading.Level = cmark_node_get_heading_level(block);
        cmark_node* const last = cmark_node_last_child(block);
        std::string tail = last != nullptr && cmark_node_get_type(last) == CMARK_NODE_TEXT
                               ? cmark_node_get_literal(last)
                               : "";
        const std::size_t from = tail.rfind("{#");
        if (from == std::string::npos || !tail.ends_with('}')) {
            ask_.Fault(cmark_node_get_start_line(block), "a heading without {#id}");
        } else {
            heading.Id = tail.substr(from + 2, tail.size() - from - 3);
            tail.erase(from);
            while (!tail.empty() && tail.back() == ' ') tail.pop_back();
            cmark_node_set_literal(last, tail.c_str());
        }
        heading.Text = Plain(block);
        cmark_node* const anchor = cmark_node_new(CMARK_NODE_HTML_INLINE);
        const std::string html = "<a class=\"here\" id=\"" + heading.Id + "\" href=\"#" +
                                 heading.Id + "\" aria-hidden=\"true\" tabindex=\"-1\"></a>";
        cmark_node_set_literal(anchor, html.c_str());
        cmark_node_prepend_child(block, anchor);
        page_.Headings.push_back(heading);
        page_.Parts.emplace_back();
    }

    void Figure(cmark_node* image) {
        const Picture picture = ask_.FindPicture(cmark_node_get_url(image));
        const std::string caption = EscapedHtml(Plain(image));
        std::string html = "<figure><a href=\"" + picture.File + "\"><img src=\"" + picture.File +
                           "\" alt=\"" + caption + "\"";
        if (picture.Width > 0) {
            html += " width=\"" + std::to_string(picture.Width) + "\" height=\"" +
                    std::to_string(picture.Height) + "\"";
        }
        html += "></a><figcaption>" + caption + "</figcaption></figure>\n";
        cmark_node* const paragraph = cmark_node_parent(image);
        if (cmark_node_first_child(paragraph) != image ||
            cmark_node_last_child(paragraph) != image) {
            ask_.Fault(cmark_node_get_start_line(paragraph), "a picture inside a sentence");
            return;
        }
        cmark_node* const block = cmark_node_new(CMARK_NODE_HTML_BLOCK);
        cmark_node_set_literal(block, html.c_str());
        cmark_node_replace(paragraph, block);
        cmark_node_free(paragraph);
    }

    const Resolver& ask_;
    cmark_node* root_ = nullptr;
    Page page_;
};

}  // namespace

std::string EscapedHtml(std::string_view text) {
    std::string html;
    for (const char c : text) {
        switch (c) {
            case '&':
                html += "&amp;";
                break;
            case '<':
                html += "&lt;";
                break;
            case '>':
                html += "&gt;";
                break;
            case '"':
                html += "&quot;";
                break;
            default:
                html += c;
        }
    }
    return html;
}

Page Render(const std::string& markdown, const Resolver& resolver) {
    return Renderer(markdown, resolver).Run();
}

}  // namespace lapvane::manual
