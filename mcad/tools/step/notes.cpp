// Notes that a file has as data: properties named 'semantic text'.
#include "step/annotation_reading.h"

namespace zeq::step {

std::optional<SemanticAnnotation> readNote(StepFile& file, const Instance& property) {
    auto note = std::make_shared<ExcPMINote>();
    bool isBlank = true;
    for (const Instance& user : property.users("PROPERTY_DEFINITION_REPRESENTATION")) {
        const Instance representation = file.at(user.parameters()[1]);
        for (const Instance& item : itemsOf(file, attribute(representation, "REPRESENTATION", 0, 1))) {
            std::wstring run = attribute(item, "DESCRIPTIVE_REPRESENTATION_ITEM", 1, 0).text();
            isBlank = isBlank && run.find_first_not_of(L" \n\r\t") == run.npos;
            if (run == L"/n" && !note->texts().empty()) { // which some writers have between lines
                const ExcPMINote::TextPtr& last = note->texts().back();
                last->setLabel(last->label() + L'\n');
                continue;
            }
            note->addText(std::make_shared<ExcPMINote::Text>());
            note->texts().back()->setLabel(run);
        }
    }
    if (isBlank) {
        tell(file, L"it has no text", property);
        return std::nullopt;
    }
    SemanticAnnotation annotation = annotationOf(file, property, note);
    note->setName(property.parameters()[1].text());
    if (note->name().empty()) note->setName(nameOf(property));
    const Instance target = file.at(property.parameters()[2]);
    note->setNOA(target.is("PRODUCT_DEFINITION_SHAPE") || target.is("PRODUCT_DEFINITION"));
    link(file, *note, {target});
    return annotation;
}

} // namespace zeq::step
