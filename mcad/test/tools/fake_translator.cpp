// A translator for tests: it answers well, or fails in the way that FAKE_TRANSLATOR names.
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <string>

#include <unistd.h>

#include "mp/shared_buffer.h"
#include "tools/fake_model.h"
#include "transport/frame.h"
#include "transport/utf8.h"
#include "zeq_api/acis_attrib_id/attrib_convexor.h"
#include "zeq_api/command/command.h"
#include "zeq_api/command/result.h"
#include "zeq_api/convexor_info/convexor_info.h"
#include "zeq_api/exchange_mechanical/block_geometry.h"
#include "zeq_api/exchange_mechanical/mechanical_data.h"
#include "zeq_api/exchange_mechanical/owned_entities.h"
#include "zeq_api/exchange_object/exchange_object_wrapper.h"
#include "zeq_api/exchange_object/messages.h"
#include "zeq_api/exchange_structure/product_structure.h"
#include "zeq_api/exchange_visualization/scene.h"

namespace {

using namespace zeq;

transport::FrameReader input(STDIN_FILENO);
transport::FrameWriter output(STDOUT_FILENO);
std::wstring received; // the text of the command

template <class Document>
std::wstring textOf(const Document& document) {
    std::wostringstream text;
    document.writeObject(text);
    return text.str();
}

/// Writes the document of an object; tells on standard error which shared buffer it names.
void send(const std::shared_ptr<IExchangeObject>& object) {
    ExchangeObjectWrapper wrapper;
    wrapper.set(object);
    const std::wstring text = textOf(wrapper);
    if (object->binary()) {
        const std::size_t quote = text.rfind(L'"');
        const std::wstring name = text.substr(quote - 36, 36);
        std::cerr << "buffer " << std::string(name.begin(), name.end()) << std::endl;
    }
    output.write(text);
}

void sendAll(const test::Documents& documents) {
    for (const auto& document : documents) send(document);
}

void sendResult(Result::ECode code, const std::wstring& message = {}, bool finished = true) {
    Result result;
    result.setCode(code);
    result.setMessage(message);
    result.setFinished(finished);
    output.write(textOf(result));
}

std::shared_ptr<ExcBlockReference> instanceOf(std::uint64_t blockId, const std::wstring& name) {
    auto reference = std::make_shared<ExcBlockReference>();
    reference->setBlockId(blockId);
    reference->setName(name);
    return reference;
}

std::shared_ptr<ExcBlock> block(std::uint64_t id, const std::wstring& name,
                                const std::vector<std::uint64_t>& children) {
    auto result = std::make_shared<ExcBlock>();
    result->setId(id);
    result->setName(name);
    result->setPart(children.empty());
    for (std::size_t i = 0; i < children.size(); ++i)
        result->addBlockReference(instanceOf(children[i], name + L":" + std::to_wstring(i)));
    return result;
}

std::shared_ptr<ExcProductStructure> structure(const std::wstring& name, std::uint64_t root) {
    auto result = std::make_shared<ExcProductStructure>();
    result->setProductName(name);
    result->setUnits(ELengthUnitType::millimeter);
    result->addRootBlockReference(instanceOf(root, name));
    return result;
}

/// A cart: a frame, and two axles with two wheels each.
std::shared_ptr<ExcProductStructure> cart() {
    auto result = structure(L"Cart", 1);
    const auto whole = block(1, L"Cart", {2, 3, 3});
    result->addBlock(whole);
    result->addBlock(block(2, L"Frame", {}));
    result->addBlock(block(3, L"Axle", {4, 4}));
    result->addBlock(block(4, L"Wheel ⌀30", {}));

    ExcBlockReference& frame = *whole->blockReferences()[0];
    frame.setPersistentId(L"frame-1");
    frame.setColor(ExcColor(255, 128, 0, 102));
    frame.setHidden(true);
    ExcMiscPropertiesGroup group;
    group.addProperty(ExcMiscProperty());
    group.addProperty(ExcMiscProperty());
    frame.miscData().addGroup(group);

    ExcTransformation placement;
    whole->blockReferences()[1]->setColor(ExcColor(0xFFFF, 0x8080, 0));
    placement.translation().set(0, 12.5, -3);
    placement.affine()[0].set(0, -1, 0); // a quarter turn about z
    placement.affine()[1].set(1, 0, 0);
    whole->blockReferences()[2]->setTransformation(placement);
    return result;
}

/// A cart whose frame had so many faces, as its translator says.
std::shared_ptr<ExcProductStructure> cartWithFrameOf(int faces) {
    auto result = cart();
    ExcMiscPropertiesGroup figures;
    figures.name() = L"geometry check";
    ExcMiscProperty count;
    count.name() = L"faces";
    count.value() = std::to_wstring(faces);
    figures.addProperty(count);
    result->getBlockById(2)->miscData().addGroup(figures);
    return result;
}

[[noreturn]] void waitForEndOfInput() {
    for (std::wstring ignored; input.next(ignored);) {
    }
    std::exit(0);
}

[[noreturn]] void ignoreEverything() {
    std::signal(SIGTERM, SIG_IGN);
    std::cerr << "deaf" << std::endl;
    for (;;) ::pause();
}

void writeRaw(const std::string& bytes) {
    if (::write(STDOUT_FILENO, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        std::exit(9);
}

/// A document of a kind that no library knows, with a shared buffer.
void sendUnknownKind() {
    const std::wstring name = IExchangeObject::generateUUID();
    mp::SharedBuffer<char>(name, false).setBuffer("data", 4);
    std::cerr << "buffer " << std::string(name.begin(), name.end()) << std::endl;
    output.write(LR"({"exchange_object_name":"exc_tomorrow","binary":true,"exchange_object_data":")" + name +
                 LR"("})");
}

void sendStructureFrom(const std::wstring& bufferName) {
    output.write(
        LR"({"exchange_object_name":"exc_product_structure","binary":true,"exchange_object_data":")" +
        bufferName + LR"("})");
}

void answer(const std::shared_ptr<ExcProductStructure>& product) {
    send(product);
    sendResult(Result::ECode::ok);
}

/// Blocks 1 to `levels`, each holding the next `width` times.
std::shared_ptr<ExcProductStructure> tower(std::uint64_t levels, std::size_t width) {
    auto result = structure(L"Tower", 1);
    for (std::uint64_t id = 1; id < levels; ++id)
        result->addBlock(block(id, L"Level", std::vector<std::uint64_t>(width, id + 1)));
    result->addBlock(block(levels, L"Top", {}));
    return result;
}

void work() {
    for (int percent : {0, 50, 100}) {
        auto progress = std::make_shared<ExcProgress>();
        progress->setProgress(percent);
        progress->setStage(L"Transferring");
        send(progress);
    }
    send(std::make_shared<ExcMessage>(L"a message for the user"));
    send(std::make_shared<ExcLog>(L"a line for the log"));
    send(cart());
    send(std::make_shared<ExcStageFinished>(ExcStageFinished::EStage::product_structure));
    sendResult(Result::ECode::ok);
}

const std::map<std::string, std::function<void()>>& misbehaviours() {
    static const std::map<std::string, std::function<void()>> table{
        {"crash",
         [] {
             std::signal(SIGSEGV, SIG_DFL);
             std::raise(SIGSEGV);
         }},
        {"killed",
         [] {
             send(cart());
             sendUnknownKind();
             std::raise(SIGKILL);
         }},
        {"exit", [] { std::exit(0); }},
        {"exit-7", [] { std::exit(7); }},
        {"half-frame",
         [] {
             writeRaw(transport::encodeFrame(L"{\"code\":\"ok\"}").substr(0, 9));
             std::exit(0);
         }},
        {"banner",
         [] {
             writeRaw("\x1B[31mLoading\nmodules\n");
             waitForEndOfInput();
         }},
        {"word",
         [] {
             writeRaw("hi\n");
             std::exit(0);
         }},
        {"huge-frame",
         [] {
             writeRaw("\xFF\xFF\xFF\xFF");
             waitForEndOfInput();
         }},
        {"not-utf8",
         [] {
             writeRaw(std::string("\x02\0\0\0\xC0\x80", 6));
             waitForEndOfInput();
         }},
        {"not-json",
         [] {
             output.write(L"{\"code\":");
             waitForEndOfInput();
         }},
        {"no-object",
         [] {
             output.write(L"[1, 2]");
             waitForEndOfInput();
         }},
        {"no-known-form",
         [] {
             output.write(L"{\"wheels\":4}");
             waitForEndOfInput();
         }},
        {"silent", [] { waitForEndOfInput(); }},
        {"closes-output",
         [] {
             ::close(STDOUT_FILENO);
             ignoreEverything();
         }},
        {"deaf", [] { ignoreEverything(); }},
        {"waits",
         [] {
             send(cart());
             sendUnknownKind();
             std::cerr << "waiting as " << ::getpid() << std::endl;
             for (;;) ::pause();
         }},
        {"hostile-name",
         [] {
             sendStructureFrom(L"../../etc/passwd");
             sendResult(Result::ECode::ok);
         }},
        {"missing-buffer",
         [] {
             sendStructureFrom(IExchangeObject::generateUUID());
             sendResult(Result::ECode::ok);
         }},
        {"unknown-kind",
         [] {
             sendUnknownKind();
             sendUnknownKind();
             answer(cart());
         }},
        {"error", [] { sendResult(Result::ECode::error, L"the file\x1B[2J is damaged"); }},
        {"interrupted", [] { sendResult(Result::ECode::interrupted); }},
        {"unknown-code", [] { sendResult(Result::ECode::unknown); }},
        {"warning",
         [] {
             send(cart());
             sendResult(Result::ECode::warning, L"one face is missing");
         }},
        {"lost-part", [] { answer(cartWithFrameOf(4)); }},
        {"lost-face",
         [] {
             const auto product = cartWithFrameOf(4);
             const auto geometry = std::make_shared<ExcBlockGeometry>();
             geometry->setBlockId(2);
             const OwnedEntities ball(new BODY(new LUMP(new SHELL(new FACE(new SPHERE({0, 0, 0}, 1))))));
             geometry->setGeometry(ball.list, true);
             send(geometry);
             answer(product);
         }},
        {"lost-links",
         [] {
             sendAll(test::mechanicalDocuments());
             sendAll(test::displayDocuments());
             const auto geometry = std::make_shared<ExcBlockGeometry>();
             geometry->setBlockId(4);
             auto* const face = new FACE(new SPHERE({0, 0, 0}, 1));
             new ATTRIB_CONVEXOR_ID(face, 12);
             const OwnedEntities ball(new BODY(new LUMP(new SHELL(face))));
             geometry->setGeometry(ball.list, true);
             send(geometry);
             answer(cart());
         }},
        {"sections",
         [] {
             const auto view = std::make_shared<ExcPMIAnnotationView>();
             view->addNote(std::make_shared<ExcPMINote>());
             view->addDimension(std::make_shared<ExcPMIDimension>());
             const auto set = std::make_shared<ExcPMIAnnotationSet>();
             set->addView(view);
             const auto pmi = std::make_shared<ExcPMIData>();
             pmi->addAnnotationSet(set);
             const auto mapping = std::make_shared<ExcMappingData>();
             mapping->add(std::make_shared<ExcEntity>(), std::make_shared<ExcEntity>());
             const auto mechanical = std::make_shared<ExcBlockMechanicalData>();
             mechanical->setPMIData(pmi);
             mechanical->setMappingData(mapping);
             send(mechanical);
             const auto face = std::make_shared<ExcVisuFace>();
             face->setPolygons({{4, {0, 1, 2}}, {4, {2, 1, 3}}});
             const auto mesh = std::make_shared<ExcVisuMesh>();
             mesh->addFace(face);
             const auto node = std::make_shared<ExcVisuNode>();
             node->setMesh(mesh);
             const auto scene = std::make_shared<ExcVisualizationData>();
             scene->addSceneRootNode(node);
             const auto display = std::make_shared<ExcBlockVisualization>();
             display->setVisualizationData(scene);
             send(display);
             answer(cart());
         }},
        {"model",
         [] {
             sendAll(test::mechanicalDocuments());
             send(cart());
             sendAll(test::displayDocuments());
             send(test::contentsReport());
             sendResult(Result::ECode::ok);
         }},
        {"crash-after-pmi",
         [] {
             sendAll(test::mechanicalDocuments());
             std::signal(SIGSEGV, SIG_DFL);
             std::raise(SIGSEGV);
         }},
        {"two-results",
         [] {
             sendResult(Result::ECode::warning, L"slow", false);
             answer(cart());
         }},
        {"no-structure", [] { sendResult(Result::ECode::ok); }},
        {"late-document",
         [] {
             answer(cart());
             sendUnknownKind();
         }},
        {"late-crash",
         [] {
             answer(cart());
             std::signal(SIGABRT, SIG_DFL);
             std::abort();
         }},
        {"echo",
         [] {
             std::cerr << transport::toUtf8(received) << std::endl;
             answer(cart());
         }},
        {"noisy",
         [] {
             std::cerr << "\x1B[31mbanner" << std::endl;
             answer(cart());
         }},
        {"cyclic",
         [] {
             auto product = structure(L"Loop", 1);
             product->addBlock(block(1, L"Ring", {2, 9}));
             product->addBlock(block(2, L"Chain", {1}));
             answer(product);
         }},
        {"wide", [] { answer(tower(80, 2)); }},
        {"deep", [] { answer(tower(20'000, 1)); }},
        {"part",
         [] {
             auto product = structure(L"SPAXIopPSProductDummyReference", 1);
             product->addBlock(block(1, L"Plate", {}));
             answer(product);
         }},
        {"names",
         [] {
             auto product = structure(L"Line\nbreak\x1B[2J \x202E", 1);
             product->addBlock(block(1, L"\xD800", {}));
             answer(product);
         }},
    };
    return table;
}

void obey(const Command& command) {
    switch (command.type()) {
    case Command::EType::info: {
        ConvexorInfo info;
        info.setName(L"fake");
        info.setVersion(L"1.2");
        info.newThirdpartyCore()->setName(L"Kernel");
        Format* format = info.newImportFormat();
        format->setDescription(L"Nothing");
        format->addExtension(L"none");
        output.write(textOf(info));
        break;
    }
    case Command::EType::import:
        work();
        break;
    default:
        sendResult(Result::ECode::ok);
    }
}

} // namespace

int main() {
    std::setlocale(LC_ALL, "C.UTF-8");
    const char* mode = std::getenv("FAKE_TRANSLATOR");
    if (!input.next(received)) return 0;
    const auto misbehaviour = misbehaviours().find(mode ? mode : "");
    if (misbehaviour != misbehaviours().end()) {
        misbehaviour->second();
    } else {
        std::wistringstream stream(received);
        Command command;
        command.readObject(stream);
        obey(command);
    }
    waitForEndOfInput();
}
