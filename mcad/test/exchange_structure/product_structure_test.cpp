// Blocks, references and the product structure: as documents, and the rules of their lists.
#include "zeq_api/exchange_structure/product_structure.h"

#include <gtest/gtest.h>

#include "mv_cvx/logger.h"
#include "support/log_capture.h"
#include "support/trace.h"

namespace zeq {
namespace {

using Ids = std::vector<std::uint64_t>;
using Lines = std::vector<test::LogLine>;

ExcBlockReferencePtr referenceTo(std::uint64_t blockId, const std::wstring& name = {}) {
    auto reference = std::make_shared<ExcBlockReference>();
    reference->setBlockId(blockId);
    reference->setName(name);
    return reference;
}

ExcBlockPtr blockWithId(std::uint64_t id) {
    auto block = std::make_shared<ExcBlock>();
    block->setId(id);
    return block;
}

Ids idsOf(const std::vector<ExcBlockReferencePtr>& references) {
    Ids ids;
    for (const auto& reference : references) ids.push_back(reference->blockId());
    return ids;
}

TEST(ProductStructure, FindsTheLastBlockWithAnId) {
    ExcProductStructure product;
    const ExcBlockPtr first = blockWithId(7);
    const ExcBlockPtr second = blockWithId(7);
    product.addBlock(first);
    product.addBlock(second);
    EXPECT_EQ(product.blocks(), (std::vector{first, second}));
    EXPECT_EQ(product.getBlockById(7), second);
    EXPECT_EQ(product.getBlockById(8), nullptr);

    const ExcBlockPtr other = blockWithId(8);
    product.addBlock(other);
    product.addBlock(first); // moves to the end
    EXPECT_EQ(product.blocks(), (std::vector{second, other, first}));
    EXPECT_EQ(product.getBlockById(7), first);
}

TEST(ProductStructure, TheSameBlockUnderANewIdIsListedTwice) {
    ExcProductStructure product;
    const ExcBlockPtr block = blockWithId(1);
    product.addBlock(block);
    block->setId(2);
    product.addBlock(block);
    EXPECT_EQ(product.blocks(), (std::vector{block, block}));
    EXPECT_EQ(product.getBlockById(1), block);
    EXPECT_EQ(product.getBlockById(2), block);
}

TEST(ProductStructure, RefusesNullWithAWarning) {
    ExcProductStructure product;
    ExcBlock block;
    test::LogCapture log(mv_cvx::Warning);
    product.addBlock(nullptr);
    product.addRootBlockReference(nullptr);
    block.addBlockReference(nullptr);
    EXPECT_EQ(
        log.take(),
        (Lines{{mv_cvx::Warning, "ExcProductStructure: attempt to add null Block object."},
               {mv_cvx::Warning, "ExcProductStructure: attempt to add null Root Block Reference object."},
               {mv_cvx::Warning, "ExcBlock: attempt to add null Block Reference object."}}));
    EXPECT_TRUE(product.blocks().empty());
    EXPECT_TRUE(product.rootBlockReferences().empty());
    EXPECT_TRUE(block.blockReferences().empty());
}

TEST(ProductStructure, RemovesOnlyTheFirstReferenceToABlock) {
    constexpr std::uint64_t large = 0xFFFFFFFFFFFFFFFF;
    ExcBlock block;
    for (const std::uint64_t id : {std::uint64_t{1}, std::uint64_t{2}, large, std::uint64_t{1}})
        block.addBlockReference(referenceTo(id));
    block.removeBlockReference(3);
    block.removeBlockReference(1);
    EXPECT_EQ(idsOf(block.blockReferences()), (Ids{2, large, 1}));
    block.removeBlockReference(large);
    EXPECT_EQ(idsOf(block.blockReferences()), (Ids{2, 1}));
}

TEST(ProductStructure, RootReferencesAreRemovedByASignedNumber) {
    ExcProductStructure product;
    for (const std::uint64_t id : {std::uint64_t{0xFFFFFFFF}, std::uint64_t{5}, std::uint64_t{5}})
        product.addRootBlockReference(referenceTo(id));
    product.removeRootBlockReference(-1); // widened, it is no 32-bit id
    EXPECT_EQ(idsOf(product.rootBlockReferences()), (Ids{0xFFFFFFFF, 5, 5}));
    product.removeRootBlockReference(5);
    EXPECT_EQ(idsOf(product.rootBlockReferences()), (Ids{0xFFFFFFFF, 5}));
}

TEST(ProductStructure, KnowsASinglePartByItsNames) {
    const std::wstring dummyProduct = L"SPAXIopPSProductDummyReference";
    const std::wstring dummyInstance = L"SPAXIopPSProductDummyInstance";
    const struct {
        std::wstring productName;
        std::vector<std::wstring> roots;
        bool isPart;
    } cases[] = {
        {L"", {}, false},
        {dummyProduct, {}, true},
        {dummyProduct, {L"a", L"b"}, true},
        {dummyProduct + L"1", {L"a"}, false},
        {L"", {dummyInstance}, true},
        {L"", {dummyInstance, dummyInstance}, false},
        {L"", {dummyProduct}, false},
        {dummyInstance, {L"a"}, false},
    };
    for (const auto& [productName, roots, isPart] : cases) {
        ExcProductStructure product;
        product.setProductName(productName);
        for (const std::wstring& name : roots) product.addRootBlockReference(referenceTo(1, name));
        EXPECT_EQ(product.isPart(), isPart) << testing::PrintToString(productName) << ", " << roots.size();
    }
}

TEST(ProductStructure, TracesWhatItDoes) {
    const std::string area = "mcad/src/zeq_api/zeq_api_exchange_structure";
    test::LogCapture log;
    ExcProductStructure product;
    product.addBlock(blockWithId(1));
    JsonDocument document;
    product.writeObject(document, document.GetAllocator());
    product.readObject(JsonValue(1));
    EXPECT_EQ(test::signaturesOf(log.take(), area),
              (std::vector<std::string>{
                  "void zeq::ExcProductStructure::addBlock(ExcBlockPtr)",
                  "virtual void zeq::ExcProductStructure::writeObject(JsonValue &, JsonAllocator &) const",
                  "virtual void zeq::ExcBlock::writeObject(JsonValue &, JsonAllocator &) const",
                  "virtual void zeq::ExcProductStructure::readObject(const JsonValue &)",
                  "ExcProductStructure object should have a JSON object type."}));
}

} // namespace
} // namespace zeq
