// A convexor to talk to, and what it answered, for the tests of the translator.
#pragma once

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/temp_dir.h"
#include "tools/zeq_run.h"
#include "transport/translator_process.h"
#include "transport/utf8.h"
#include "zeq_api/zeq_api.h"

namespace zeq::test {

/// Everything that came in answer to one command.
struct Answer {
    std::optional<Result> result;
    std::optional<ConvexorInfo> info;
    std::shared_ptr<ExcProductStructure> product;
    std::size_t geometries = 0;
    std::vector<std::shared_ptr<ExcBlockVisualization>> scenes;
    std::shared_ptr<ExcRootAssemblyVisualization> assembly;
    std::vector<std::shared_ptr<ExcBlockMechanicalData>> mappings; ///< mechanical data with one
    std::vector<ExcStageFinished::EStage> finished;
    std::vector<std::shared_ptr<ExcProgress>> progress;
    std::wstring log;
    std::wstring messages;
};

/// A running convexor.
class Translator {
    using Event = transport::TranslatorProcess::Event;

public:
    Translator() : m_process(ZEQ_CONVEXOR, m_signals) { std::signal(SIGPIPE, SIG_IGN); }

    transport::TranslatorProcess& process() { return m_process; }

    void send(const std::wstring& text) { m_process.send(text); }
    void send(const Command& command) {
        std::wostringstream stream;
        command.writeObject(stream);
        send(stream.str());
    }

    /// Takes documents up to the result, or to the end of the process; `onProgress` sees the progress at
    /// once.
    Answer answer(const std::function<void()>& onProgress = {}) {
        Answer answer;
        while (!answer.result) {
            switch (m_process.wait(std::chrono::steady_clock::now() + std::chrono::minutes(2))) {
            case Event::document:
                take(m_process.document(), answer);
                if (onProgress && !answer.progress.empty()) onProgress();
                break;
            case Event::ended:
                return answer;
            case Event::deadline:
                ADD_FAILURE() << "the translator fell silent";
                return answer;
            default:
                break;
            }
        }
        return answer;
    }

    /// Waits for the end of the process; answers that still come are taken along.
    bool endsInOrder() {
        for (;;) {
            const Event event = m_process.wait(std::chrono::steady_clock::now() + std::chrono::minutes(2));
            if (event == Event::ended) return m_process.succeeded();
            if (event == Event::deadline) return false;
        }
    }

private:
    template <class Document>
    static void read(const std::wstring& text, Document& document) {
        std::wistringstream stream(text);
        document.readObject(stream);
    }

    static void take(const std::wstring& text, Answer& answer) {
        if (text.find(L"\"exchange_object_name\"") == text.npos) {
            if (text.find(L"\"code\"") != text.npos)
                read(text, answer.result.emplace());
            else
                read(text, answer.info.emplace());
            return;
        }
        ExchangeObjectWrapper wrapper;
        wrapper.setDelayedLoading(true);
        read(text, wrapper);
        if (wrapper.get()) loadWithSections(*wrapper.get());
        if (const auto progress = std::dynamic_pointer_cast<ExcProgress>(wrapper.get()))
            answer.progress.push_back(progress);
        else if (const auto line = std::dynamic_pointer_cast<ExcLog>(wrapper.get()))
            answer.log += line->get() + L"\n";
        else if (const auto message = std::dynamic_pointer_cast<ExcMessage>(wrapper.get()))
            answer.messages += message->get() + L"\n";
        else if (const auto stage = std::dynamic_pointer_cast<ExcStageFinished>(wrapper.get()))
            answer.finished.push_back(stage->stage());
        else if (const auto product = std::dynamic_pointer_cast<ExcProductStructure>(wrapper.get()))
            answer.product = product;
        else if (const auto scene = std::dynamic_pointer_cast<ExcBlockVisualization>(wrapper.get()))
            answer.scenes.push_back(scene);
        else if (const auto assembly = std::dynamic_pointer_cast<ExcRootAssemblyVisualization>(wrapper.get()))
            answer.assembly = assembly;
        else if (const auto data = std::dynamic_pointer_cast<ExcBlockMechanicalData>(wrapper.get());
                 data && data->mappingData())
            answer.mappings.push_back(data);
        else if (std::dynamic_pointer_cast<ExcBlockGeometry>(wrapper.get()))
            ++answer.geometries;
    }

    transport::SignalPipe m_signals{SIGCHLD};
    transport::TranslatorProcess m_process;
};

inline Command simpleCommand(Command::EType type) {
    Command command;
    command.setType(type);
    return command;
}

inline Command importCommand(const std::filesystem::path& file, bool withMiscData = true) {
    Command command = simpleCommand(Command::EType::import);
    const auto options = Command::newImportOptions();
    options->setFile(transport::fromUtf8(file.string()));
    options->setTranslateMiscData(withMiscData);
    command.setImportOptions(options);
    return command;
}

/// An option group with one setting.
inline std::wstring optionGroup(const std::wstring& operation, const std::wstring& format,
                                const std::wstring& key, const std::wstring& value) {
    return LR"({"operation_type":")" + operation + LR"(","format_type":")" + format + LR"(",")" + key +
           LR"(":")" + value + LR"("})";
}

class Convexor : public testing::Test {
protected:
    static void SetUpTestSuite() {
        s_dir = new TempDir;
        ASSERT_EQ(runProgram({ZEQ_SAMPLES, s_dir->path().string()}).exitCode, 0);
    }
    static void TearDownTestSuite() {
        delete s_dir;
        s_dir = nullptr;
    }

    static std::filesystem::path sample(const std::string& name) { return s_dir->path() / name; }
    static std::filesystem::path write(const std::string& name, const std::string& content) {
        std::ofstream(sample(name), std::ios::binary) << content;
        return sample(name);
    }
    static std::string contentOf(const std::string& name) {
        std::ostringstream content;
        content << std::ifstream(sample(name), std::ios::binary).rdbuf();
        return content.str();
    }

    /// What a translator of its own answers to an import with these option groups, the elements of a JSON
    /// array.
    static Answer importWith(const std::filesystem::path& file, const std::wstring& groups,
                             bool withMiscData = true) {
        Command command = importCommand(file, withMiscData);
        JsonDocument array;
        array.Parse((L"[" + groups + L"]").c_str());
        EXPECT_FALSE(array.HasParseError()) << transport::toUtf8(groups);
        for (const JsonValue& group : array.GetArray())
            command.importOptions()->setFormatOptions(IFormatOptions::readOptions(group));
        Translator translator;
        translator.send(command);
        Answer answer = translator.answer();
        EXPECT_TRUE(answer.product) << file;
        return answer;
    }
    /// The same for groups that say only what they say, which no class can.
    static Answer importAsSaid(const std::filesystem::path& file, const std::wstring& groups) {
        Translator translator;
        translator.send(LR"({"command":"import","options":{"translate_misc_data":true,"file":")" +
                        transport::fromUtf8(file.string()) + LR"(","format_options":[)" + groups + L"]}}");
        Answer answer = translator.answer();
        EXPECT_TRUE(answer.product) << file;
        return answer;
    }
    static std::shared_ptr<ExcProductStructure> import(const std::filesystem::path& file) {
        return importWith(file, {}).product;
    }

    static inline TempDir* s_dir = nullptr;
};

} // namespace zeq::test
