// host TRANSLATOR FILE: has a translator import a file, and prints what arrives.
#include <clocale>
#include <csignal>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>

#include "transport/translator_process.h"
#include "transport/utf8.h"
#include "zeq_api/zeq_api.h"

namespace {

using zeq::transport::TranslatorProcess;

std::wstring importCommand(const std::string& file) {
    zeq::Command command;
    command.setType(zeq::Command::EType::import);
    command.setInternalInterface(zeq::EConvexorInterface::connect);
    const auto options = zeq::Command::newImportOptions();
    options->setFile(zeq::transport::fromUtf8(file));
    command.setImportOptions(options);
    std::wostringstream text;
    command.writeObject(text);
    return text.str();
}

void print(const zeq::ExcProductStructure& product) {
    for (const zeq::ExcBlockReferencePtr& root : product.rootBlockReferences())
        std::wcout << L"root " << root->name() << L" of block " << root->blockId() << L'\n';
    for (const zeq::ExcBlockPtr& block : product.blocks())
        std::wcout << L"block " << block->id() << L' ' << block->name() << L'\n';
}

void print(zeq::ExcBlockGeometry& geometry) {
    geometry.load(); // from now on its shared buffer goes when the object does; without this it stays
    zeq::OwnedEntities entities;
    if (geometry.getGeometry(entities.list))
        std::wcout << L"geometry of block " << geometry.blockId() << L": " << entities.list.count()
                   << L" top entities\n";
}

/// Takes an exchange object or a result, of which the finished one is the last document.
void take(const std::wstring& text, zeq::Result& result) {
    std::wistringstream stream(text);
    if (text.find(L"\"exchange_object_name\"") == text.npos) {
        result.readObject(stream);
        std::wcout << zeq::enumToString(result.code()) << L' ' << result.message() << L'\n';
        return;
    }
    zeq::ExchangeObjectWrapper wrapper;
    wrapper.readObject(stream); // takes a product structure out of its shared buffer, which it removes
    const auto object = wrapper.get();
    if (const auto product = std::dynamic_pointer_cast<zeq::ExcProductStructure>(object))
        print(*product);
    else if (const auto geometry = std::dynamic_pointer_cast<zeq::ExcBlockGeometry>(object))
        print(*geometry);
}

int run(const std::string& program, const std::string& file) {
    using Event = TranslatorProcess::Event;
    zeq::transport::SignalPipe signals{SIGCHLD, SIGINT, SIGTERM};
    TranslatorProcess translator(program, signals);
    translator.send(importCommand(file));
    zeq::Result result;
    for (;;) {
        switch (translator.wait({})) {
        case Event::document:
            take(translator.document(), result);
            if (result.isFinished()) translator.closeInput(); // it ends
            break;
        case Event::errorLine:
            std::cerr << translator.errorLine() << '\n';
            break;
        case Event::signal:
            translator.terminate();
            break;
        case Event::ended:
            if (!result.isFinished()) std::cerr << "The translator " << translator.describeEnd() << '\n';
            return result.isFinished() && result.code() != zeq::Result::ECode::error ? 0 : 1;
        default:
            break;
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    std::setlocale(LC_ALL, "C.UTF-8");
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return run(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
