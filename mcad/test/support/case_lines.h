// Reads the JSON Lines files of mcad/test/data.
#pragma once

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "support/json_text.h"

namespace zeq::test {

/// Calls `visit(line number, document)` for each line of a file, which has to be ASCII.
template <class Visit>
void forEachLine(const std::string& fileName, Visit&& visit) {
    std::ifstream file(ZEQ_TEST_DATA "/" + fileName);
    if (!file) throw std::runtime_error("Cannot open '" + fileName + "'");
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        std::wistringstream stream(std::wstring(line.begin(), line.end()));
        visit(number, parse(stream));
    }
}

} // namespace zeq::test
