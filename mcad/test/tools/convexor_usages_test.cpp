// Usages of products that the kernel is spared, against the same ones as it reads them.
#include <regex>

#include "tools/convexor_fixture.h"

namespace zeq::test {
namespace {

/// The structure but for what differs in every import.
std::wstring textOf(const ExcProductStructure& product) {
    std::wostringstream text;
    JsonDocument document;
    product.writeObject(document, document.GetAllocator());
    JsonTextIO::write(text, document, 0);
    return std::regex_replace(text.str(), std::wregex(LR"("guid":"[^"]*")"), L"");
}

class ConvexorUsages : public Convexor {
protected:
    /// Seven groups of up to 43 usages of three parts.
    static std::string lattice() {
        EXPECT_EQ(runProgram({ZEQ_SAMPLES, s_dir->path().string(), "--instances", "300", "--parts", "3",
                              "--group", "43"})
                      .exitCode,
                  0);
        return contentOf("lattice_300.stp");
    }
    static Answer read(const std::string& text) { return importWith(write("usages.stp", text), {}); }
};

TEST_F(ConvexorUsages, AreAsTheKernelReadsThem) {
    struct Case {
        const char* description;
        const char* what; ///< is replaced in the file
        const char* by;
        const wchar_t* log = L"The kernel is spared 291 of 307 usages";
    };
    // The first usage of each of the three parts stays, the first one in each of the other groups, and the groups'.
    const Case cases[]{
        {"as written", "Lattice", "Lattice"},
        {"names with quotes and control directives", "'Cell 2[.]", R"('Cell \X2\00FC\X0\ ''2'' \S\d \X\E9.)"},
        {"a name of the kernel's making", "'Cell 2[.][0-9]*'", "'=>[0:1:1:2]'"},
        {"no names", "(USAGE_OCCURRENCE[(]'[^']*'),'[^']*','[^']*'", "$1,'',''"},
        {"descriptions for names", "(USAGE_OCCURRENCE[(]'[^']*'),'([^']*)','[^']*'", "$1,'','about $2'"},
        {"in centimetres", "SI_UNIT[(][.]MILLI[.],[.]METRE[.][)]", "SI_UNIT(.CENTI.,.METRE.)"},
        {"turned obliquely", "[(]0[.],0[.],1[.][)]", "(0.1,0.3,0.97)"},
        {"without axes", "(AXIS2_PLACEMENT_3D[(]'',#[0-9]*),#[0-9]*,#[0-9]*", "$1,$$,$$"},
        {"an assembly that has a shape itself", R"((#56 = SHAPE_REPRESENTATION\('',\())", "$1#248,",
         L"Reading once more: the kernel has made something else of the usages of products"},
    };
    const std::string original = lattice();
    for (const Case& each : cases) {
        SCOPED_TRACE(each.description);
        const std::string text = std::regex_replace(original, std::regex(each.what), each.by);
        // What bytes beyond ASCII stand for is the kernel's to tell.
        const std::string foreign = std::regex_replace(
            text, std::regex("(NEXT_ASSEMBLY_USAGE_OCCURRENCE[(])'([^']*)'"), "$1'$2\xC3\xBC'");
        const Answer spared = read(text), whole = read(foreign);
        ASSERT_TRUE(spared.product && whole.product);
        EXPECT_NE(spared.log.find(each.log), spared.log.npos) << transport::toUtf8(spared.log);
        EXPECT_EQ(whole.log.find(L"spared"), whole.log.npos);
        EXPECT_EQ(std::regex_replace(textOf(*spared.product), std::wregex(L"\xFC"), L""),
                  std::regex_replace(textOf(*whole.product), std::wregex(L"\xFC"), L""));
        EXPECT_EQ(spared.result->code(), whole.result->code());
    }
}

} // namespace
} // namespace zeq::test
