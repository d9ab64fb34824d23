#include "langfile/NumberedTexts.h"

#include <gtest/gtest.h>

using mw::ModuleTexts;
using mw::ScanNumberedTexts;
using mw::SourceFile;

namespace {

// What every project file of the program has: the window whose texts Texts() returns.
const SourceFile kProjectHeader{"Project.h", R"(
class Project {
public:
    FormTexts Texts() const { return FormTexts(program_.Lang.LangDoc(), "Form1"); }
};
)"};

struct ScanCase {
    const char* Name;
    std::vector<SourceFile> Sources;
    std::map<std::string, ModuleTexts> Forms;
    std::vector<std::string> Errors; // a part of each error, in order
};

TEST(NumberedTexts, FindsEachCallFormInItsWindow)
{
    const std::vector<ScanCase> cases = {
        {"an object of the file's constant, a call over three lines, escapes",
         {{"Check.cpp", R"(
constexpr const char* kForm = "frmCheck";
void Check(const LangDoc& lang, Prompt& prompt) {
    const FormTexts text(lang, kForm);
    prompt.Message(text(26,
                        "Error \"at\"\tnode "
                        "\101\x42\u00e9\n") + name);
})"}},
         {{"frmCheck", {{26, "Error \"at\"\tnode AB\xc3\xa9\n"}}}},
         {}},
        {"a temporary names its window whatever the file's constant",
         {{"Chap.cpp", R"(
constexpr const char* kForm = "frmOther";
void Apply() { prompt.Message(FormTexts(lang, "frmChap")(9, "Can not find any chapter")); }
void Other() { prompt.Message(FormTexts(lang, kForm)(2, "Other")); })"}},
         {{"frmChap", {{9, "Can not find any chapter"}}}, {"frmOther", {{2, "Other"}}}},
         {}},
        {"the window of a function returning texts, called or kept",
         {kProjectHeader, {"Remove.cpp", R"(
bool Remove(Project& project) {
    project.Ask().Ask(project.Texts()(1, "File is not saved. Save it now?"));
    const FormTexts texts = project.Texts();
    project.Ask().Message(texts(38, "Please select a Title node"));
})"}},
         {{"Form1", {{1, "File is not saved. Save it now?"}, {38, "Please select a Title node"}}}},
         {}},
        {"a parameter belongs to the file's constant, else to the default window",
         {{"Nodes.cpp", "void Add(int i, const FormTexts& texts, Prompt& p) {\n"
                        "    p.Message(texts(5, \"Can not detect\")); }"},
          {"Grab.cpp", "constexpr const char* kForm = \"mAVIDecs\";\n"
                       "void Grab(FormTexts& text) { m(text(4, \"Frame not found\")); }"}},
         {{"Form1", {{5, "Can not detect"}}}, {"mAVIDecs", {{4, "Frame not found"}}}},
         {}},
        {"look-alikes in comments, strings, raw strings and other calls are no texts",
         {{"Other.cpp", R"__(
// const FormTexts text(lang, "frmX"); text(3, "comment")
/* text(4, "block") */
const FormTexts text(lang, "frmX");
const char* s = "text(5, \"string\")";
const char* r = R"(text(6, "raw"))";
list.setColumnWidth(0, "x");
other(7, "not a texts object");
#define T text(8, "directive")
)__"}},
         {},
         {}},
        {"the same default twice is one text; two defaults are an error naming both places",
         {{"a.cpp", "void a() { FormTexts(l, \"Form1\")(22, \"Checking complete with \"); }"},
          {"b.cpp", "void b() { FormTexts(l, \"Form1\")(22, \"Checking complete with \"); }"},
          {"c.cpp", "void c() {\n FormTexts(l, \"Form1\")(22, \"Check complete\"); }"}},
         {{"Form1", {{22, "Checking complete with "}}}},
         {"c.cpp:2: Form1 text 22 has two defaults: \"Checking complete with \" (a.cpp:1) and \"Check complete\""}},
        {"a window that cannot be told and a default that is no literal are errors",
         {{"d.cpp", "void d(const std::string& form) {\n const FormTexts t(lang, form);\n"
                    " m(t(3, \"x\"));\n m(FormTexts(lang, form)(4, \"y\"));\n"
                    " const FormTexts u(lang, \"frmD\");\n m(u(5, someText)); }"}},
         {},
         {"d.cpp:2: can not tell the window of t", "d.cpp:4: can not tell the window of text 4",
          "d.cpp:6: text 5 of frmD has no literal default"}},
    };
    for (const ScanCase& c : cases) {
        SCOPED_TRACE(c.Name);
        const mw::NumberedTextScan scan = ScanNumberedTexts(c.Sources, "Form1");
        EXPECT_EQ(scan.Forms, c.Forms);
        ASSERT_EQ(scan.Errors.size(), c.Errors.size()) << (scan.Errors.empty() ? "" : scan.Errors.front());
        for (std::size_t i = 0; i < c.Errors.size(); ++i)
            EXPECT_NE(scan.Errors[i].find(c.Errors[i]), std::string::npos) << scan.Errors[i];
    }
}

} // namespace
