// Reads the JSON Lines files of mcad/test/data.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

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

/// The case files, by the names that forEachLine takes.
inline std::vector<std::string> caseFiles() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(ZEQ_TEST_DATA "/cases"))
        names.push_back("cases/" + entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

} // namespace zeq::test
