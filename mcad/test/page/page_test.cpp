// Pages hold what they are given, whatever it is.
#include "page/page.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "page/page_elements.h"

namespace zeq::page {
namespace {

std::string pageOf(std::string_view shell, std::string_view glb, std::string_view facts) {
    std::string page;
    write(shell, glb, facts, [&page](std::string_view piece) { page += piece; });
    return page;
}

TEST(Page, HoldsWhatItIsGiven) {
    std::string noise(1'000'000, '\0');
    for (std::size_t i = 0, number = 1; i < noise.size(); ++i)
        noise[i] = static_cast<char>((number = number * 6364136223846793005U + 1442695040888963407U) >> 56);
    const std::string hostile = "</script><script>alert(1)</script><!-- model -->";
    for (const std::string& glb : {std::string(), std::string("glTF"), hostile, noise}) {
        const std::string page = pageOf("<body>\n<!-- model -->\n</body>", glb, hostile);
        EXPECT_EQ(page.find("alert"), std::string::npos);
        EXPECT_TRUE(page.starts_with("<body>\n<script ") && page.ends_with("</script>\n\n</body>"));
        EXPECT_TRUE(test::elementOf(page, "model") == glb);
        EXPECT_EQ(test::elementOf(page, "facts"), hostile);
    }
}

TEST(Page, HasOnePlaceForAModel) {
    EXPECT_THROW(pageOf("", "", ""), std::invalid_argument);
    EXPECT_THROW(pageOf("<!-- model --><!-- model -->", "", ""), std::invalid_argument);
    if (shell().empty()) GTEST_SKIP() << "built without the page";
    EXPECT_NO_THROW(pageOf(shell(), "", ""));
}

} // namespace
} // namespace zeq::page
