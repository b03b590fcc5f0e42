// The module as JSON; see ModuleJson.h.
#include "cli/ModuleJson.h"

#include <cstdio>

namespace lumora::cli {

std::string jsonString(const std::string& text) {
    std::string out = "\"";
    for (char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"') {
            out += "\\\"";
        } else if (c == '\\') {
            out += "\\\\";
        } else if (byte < 0x20) {
            char escaped[7];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", byte);
            out += escaped;
        } else {
            out += c;
        }
    }
    out += '"';
    return out;
}

namespace {

// Writes one object's members, separated by commas, in the order they are added.
class ObjectWriter {
  public:
    explicit ObjectWriter(std::string& out, const std::string& indent)
        : out_(out), indent_(indent) {
        out_ += "{";
    }
    void raw(const char* key, const std::string& json) {
        out_ += first_ ? "\n" : ",\n";
        first_ = false;
        out_ += indent_ + "  " + jsonString(key) + ": " + json;
    }
    void text(const char* key, const std::string& value) { raw(key, jsonString(value)); }
    void close() { out_ += first_ ? "}" : "\n" + indent_ + "}"; }

  private:
    std::string& out_;
    std::string indent_;
    bool first_ = true;
};

template <typename Item, typename WriteItem>
std::string array(const std::vector<Item>& items, const std::string& indent, WriteItem write) {
    if (items.empty())
        return "[]";
    std::string out = "[";
    for (std::size_t i = 0; i < items.size(); ++i) {
        out += (i == 0 ? "\n" : ",\n") + indent + "  ";
        write(out, items[i], indent + "  ");
    }
    out += "\n" + indent + "]";
    return out;
}

std::string colorsJson(const ColorScheme& c, const std::string& indent) {
    std::string out;
    ObjectWriter o(out, indent);
    o.text("aLink", c.aLink);
    o.text("aVisited", c.aVisited);
    o.text("contentBackground", c.contentBackground);
    o.text("titleColor", c.titleColor);
    o.text("titleBackground", c.titleBackground);
    o.text("pageNumberBackground", c.pageNumberBackground);
    o.text("pageNameBackground", c.pageNameBackground);
    o.text("pageNumberColor", c.pageNumberColor);
    o.text("pageNameColor", c.pageNameColor);
    o.text("copyRightColor", c.copyRightColor);
    o.close();
    return out;
}

} // namespace

std::string moduleJson(const CourseModule& m) {
    std::string out;
    ObjectWriter o(out, "");
    o.text("modTitle", m.modTitle);
    o.text("moduleType", m.moduleType);
    o.text("folderName", m.folderName);
    o.text("copyright", m.copyright);
    o.text("useSCORM", m.useSCORM);
    o.text("shuffleEvalQuestions", m.shuffleEvalQuestions);
    o.raw("intNumQuestions", std::to_string(m.intNumQuestions));
    o.raw("pages",
          array(m.pages, "  ", [](std::string& s, const LessonPage& p, const std::string& indent) {
              ObjectWriter w(s, indent);
              w.text("fileName", p.fileName);
              w.text("title", p.title);
              w.text("content", p.content);
              w.close();
          }));
    o.raw("glossary", array(m.glossary, "  ",
                            [](std::string& s, const GlossaryTerm& t, const std::string& indent) {
                                ObjectWriter w(s, indent);
                                w.text("id", t.id);
                                w.text("term", t.term);
                                w.text("definition", t.definition);
                                w.close();
                            }));
    o.raw(
        "questions",
        array(m.questions, "  ", [](std::string& s, const QAndAItem& q, const std::string& indent) {
            ObjectWriter w(s, indent);
            w.text("id", q.id);
            w.text("questionType", q.questionType);
            w.text("questionText", q.questionText);
            w.text("rationale", q.rationale);
            w.text("shuffleDistractors", q.shuffleDistractors);
            w.raw("options",
                  array(q.options, indent + "  ",
                        [](std::string& s2, const QuestionOption& op, const std::string& indent2) {
                            ObjectWriter ow(s2, indent2);
                            ow.text("correct", op.correct);
                            ow.text("txtValue", op.txtValue);
                            ow.text("txtDisplay", op.txtDisplay);
                            ow.text("incorrectRationale", op.incorrectRationale);
                            ow.close();
                        }));
            w.close();
        }));
    o.raw("colors", colorsJson(m.colors, "  "));
    o.close();
    out += "\n";
    return out;
}

} // namespace lumora::cli
