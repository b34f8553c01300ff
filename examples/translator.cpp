// translator: imports a text file with one number as a ball of that radius in millimetres.
#include <clocale>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include <unistd.h>

#include "transport/frame.h"
#include "transport/utf8.h"
#include "zeq_api/zeq_api.h"

namespace {

zeq::transport::FrameWriter output(STDOUT_FILENO);

void send(const mp::ISerializable& document) {
    std::wostringstream text;
    document.writeObject(text); // a product structure goes into a shared buffer, which the text names
    output.write(text.str());
}

void send(const std::shared_ptr<zeq::IExchangeObject>& object) {
    zeq::ExchangeObjectWrapper wrapper;
    wrapper.set(object);
    send(wrapper);
}

std::shared_ptr<zeq::ExcProductStructure> productOf(const std::wstring& name) {
    const auto block = std::make_shared<zeq::ExcBlock>();
    block->setId(1);
    block->setName(name);
    block->setPart(true);
    const auto reference = std::make_shared<zeq::ExcBlockReference>();
    reference->setGuid(zeq::IExchangeObject::generateUUID());
    reference->setName(name);
    reference->setBlockId(1);
    auto product = std::make_shared<zeq::ExcProductStructure>();
    product->setProductName(name);
    product->setUnits(zeq::ELengthUnitType::millimeter);
    product->addBlock(block);
    product->addRootBlockReference(reference); // without one the tree is empty
    return product;
}

/// A solid with one face, which needs no boundary.
std::shared_ptr<zeq::ExcBlockGeometry> ball(double radius) {
    FACE* const face = ACIS_NEW FACE(ACIS_NEW SPHERE(SPAposition(0, 0, 0), radius));
    ACIS_NEW ATTRIB_CONVEXOR_ID(face, 1);
    const zeq::OwnedEntities body(ACIS_NEW BODY(ACIS_NEW LUMP(ACIS_NEW SHELL(face))));
    auto geometry = std::make_shared<zeq::ExcBlockGeometry>();
    geometry->setBlockId(1);
    if (!geometry->setGeometry(body.list, true)) throw std::runtime_error("The geometry cannot be sent.");
    return geometry;
}

void import(const zeq::ImportOptions& options) {
    double radius = 0;
    std::ifstream file(zeq::transport::toUtf8(options.file()));
    if (!(file >> radius) || radius <= 0) throw std::runtime_error("The file holds no radius.");
    send(productOf(L"Ball"));
    send(std::make_shared<zeq::ExcStageFinished>(zeq::ExcStageFinished::EStage::product_structure));
    send(ball(radius));
}

/// Does what a command says; the result comes last.
zeq::Result execute(const std::wstring& text) {
    zeq::Result result;
    result.setFinished(true);
    result.setCode(zeq::Result::ECode::ok);
    try {
        zeq::Command command;
        std::wistringstream stream(text);
        command.readObject(stream);
        if (command.type() == zeq::Command::EType::import && command.importOptions())
            import(*command.importOptions());
        else if (command.type() != zeq::Command::EType::ping)
            throw std::runtime_error("This translator only imports.");
    } catch (const std::exception& error) {
        result.setCode(zeq::Result::ECode::error);
        result.setMessage(mp::toWideString(error.what()));
    }
    return result;
}

} // namespace

int main() {
    std::setlocale(LC_ALL, "C.UTF-8");
    zeq::transport::FrameReader input(STDIN_FILENO);
    for (std::wstring command; input.next(command);) send(execute(command));
}
