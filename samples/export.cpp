// File export through Open CASCADE, with the time stamps fixed so that the files are reproducible.
#include "export.h"

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

#include <APIHeaderSection_MakeHeader.hxx>
#include <IGESCAFControl_Writer.hxx>
#include <IGESControl_Controller.hxx>
#include <IGESData_GlobalSection.hxx>
#include <IGESData_IGESModel.hxx>
#include <Interface_Static.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <StepBasic_SiUnitAndLengthUnit.hxx>
#include <StepData_StepModel.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <StepRepr_RepresentationContext.hxx>
#include <StepShape_AdvancedBrepShapeRepresentation.hxx>
#include <StepShape_AdvancedFace.hxx>
#include <StepVisual_MechanicalDesignGeometricPresentationRepresentation.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TransferBRep.hxx>
#include <TransferBRep_ShapeMapper.hxx>
#include <Transfer_FinderProcess.hxx>
#include <XSControl_TransferWriter.hxx>
#include <XSControl_WorkSession.hxx>

namespace samples {

namespace {

Handle(TCollection_HAsciiString) text(const char* value) { return new TCollection_HAsciiString(value); }

[[noreturn]] void fail(const std::filesystem::path& path, const char* reason) {
    throw std::runtime_error("Cannot write '" + path.string() + "': " + reason);
}

/// The writer leaves the styles in the order of a hash table over addresses, which differs from run to run:
/// puts them into the order of the shapes they belong to.
void sortStyles(const Handle(StepData_StepModel) & model) {
    using Style = Handle(StepVisual_MechanicalDesignGeometricPresentationRepresentation);
    std::vector<Handle(Standard_Transient)> entities;
    std::vector<std::pair<int, Style>> styles;
    std::size_t firstStyle = 0;
    for (int i = 1; i <= model->NbEntities(); ++i) {
        entities.push_back(model->Value(i));
        if (const Style style = Style::DownCast(entities.back()); !style.IsNull()) {
            if (styles.empty()) firstStyle = entities.size() - 1;
            styles.emplace_back(model->Number(style->ContextOfItems()), style);
        }
    }
    std::ranges::stable_sort(styles, {}, [](const auto& style) { return style.first; });

    model->ClearEntities();
    for (std::size_t i = 0; i < firstStyle; ++i) model->AddEntity(entities[i]);
    for (const auto& [context, style] : styles) model->AddWithRefs(style, model->Protocol());
    for (const auto& entity : entities)
        if (!model->Contains(entity)) model->AddEntity(entity);
}

/// The first instance of a kind; 0 if there is none.
int numberOf(const Handle(StepData_StepModel) & model, const Handle(Standard_Type) & kind) {
    for (int i = 1; i <= model->NbEntities(); ++i)
        if (model->Value(i)->IsKind(kind)) return i;
    return 0;
}

/// The writer numbers the instances by their places in the model.
StepNumbers findNumbers(STEPCAFControl_Writer& writer, const std::vector<TopoDS_Shape>& faces) {
    const Handle(StepData_StepModel) model = writer.ChangeWriter().Model();
    StepNumbers numbers;
    numbers.last = model->NbEntities();
    numbers.shape = numberOf(model, STANDARD_TYPE(StepRepr_ProductDefinitionShape));
    numbers.lengthUnit = numberOf(model, STANDARD_TYPE(StepBasic_SiUnitAndLengthUnit));
    numbers.representation = numberOf(model, STANDARD_TYPE(StepShape_AdvancedBrepShapeRepresentation));
    if (numbers.representation > 0) {
        const auto representation =
            Handle(StepRepr_Representation)::DownCast(model->Value(numbers.representation));
        numbers.context = model->Number(representation->ContextOfItems());
    }
    const auto written = writer.ChangeWriter().WS()->TransferWriter()->FinderProcess();
    for (const TopoDS_Shape& face : faces) {
        Handle(StepShape_AdvancedFace) entity;
        const bool isFound = written->FindTypedTransient(TransferBRep::ShapeMapper(written, face),
                                                         STANDARD_TYPE(StepShape_AdvancedFace), entity);
        numbers.faces.push_back(isFound ? model->Number(entity) : 0);
    }
    return numbers;
}

} // namespace

void writeStep(Model& model, const std::filesystem::path& path) { writeStep(model, path, {}); }

StepNumbers writeStep(Model& model, const std::filesystem::path& path,
                      const std::vector<TopoDS_Shape>& faces) {
    // The writer takes the schema when it is built: the parameter must stand before that.
    STEPCAFControl_Controller::Init();
    Interface_Static::SetCVal("write.step.schema", "AP242DIS");
    STEPCAFControl_Writer writer;
    writer.SetMaterialMode(Standard_True);
    if (!writer.Transfer(model.finish(), STEPControl_AsIs))
        fail(path, "the kernel cannot represent the model");

    const Handle(StepData_StepModel) document = writer.ChangeWriter().Model();
    sortStyles(document);
    APIHeaderSection_MakeHeader header(document);
    header.SetName(text(path.filename().c_str()));
    header.SetTimeStamp(text("2025-01-01T00:00:00"));
    header.SetAuthorValue(1, text("zeq_samples"));
    header.SetOriginatingSystem(text("zeq_samples"));
    if (writer.Write(path.c_str()) != IFSelect_RetDone) fail(path, "writing failed");
    return findNumbers(writer, faces);
}

void writeIges(Model& model, const std::filesystem::path& path) {
    IGESControl_Controller::Init();
    IGESCAFControl_Writer writer;
    if (!writer.Transfer(model.finish())) fail(path, "the kernel cannot represent the model");

    IGESData_GlobalSection section = writer.Model()->GlobalSection();
    section.SetFileName(text(path.filename().c_str()));
    section.SetDate(text("20250101.000000"));
    section.SetLastChangeDate(text("20250101.000000"));
    section.SetAuthorName(text("zeq_samples"));
    writer.Model()->SetGlobalSection(section);
    writer.ComputeModel();
    if (!writer.Write(path.c_str())) fail(path, "writing failed");
}

} // namespace samples
