// The answer to an info command.
#include "convexor/description.h"

#include <Standard_Version.hxx>

#include "convexor/model_reader.h"
#include "convexor/text.h"

namespace zeq::convexor {

ConvexorInfo describeTranslator() {
    ConvexorInfo info;
    info.setName(L"convexor");
    info.setVersion(wideText(CONVEXOR_VERSION));
    info.setRequestedInterface(EConvexorInterface::connect);
    ThirdpartyCore* const kernel = info.newThirdpartyCore();
    kernel->setName(L"Open CASCADE Technology");
    kernel->setVersion(wideText(OCC_VERSION_COMPLETE));
    info.addImportFormats(importFormats());
    info.setModelerMajorVersion(7); // of the records that geometry travels in
    return info;
}

} // namespace zeq::convexor
