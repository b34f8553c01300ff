// The documents that travel alone and have no case file elsewhere, so that the schema's test has written ones
// of every class.
#include <gtest/gtest.h>

#include "support/case_runner.h"
#include "zeq_api/zeq_api.h"

namespace zeq {
namespace {

TEST(WholeDocuments, BecomeWhatTheirCasesSay) {
    test::CaseRunner()
        .add<Command>("Command")
        .add<ExchangeObjectWrapper>("ExchangeObjectWrapper")
        .run("documents.jsonl");
}

} // namespace
} // namespace zeq
