// The way to the sections of mechanical data that readObject() and load() leave out. Any thread may call these
// functions, for an object that no other thread uses.
#pragma once

#include "zeq_api/exchange_mechanical/mechanical_data.h"

namespace zeq {

/// The PMI of mechanical data, which stands in their document under "pmi_data".
/// @param mechanicalData what writeObject() of ExcRootMechanicalData or ExcBlockMechanicalData wrote, or the
///        content of a shared buffer as JsonBinaryIO::decode() gives it
/// @return a new object, which belongs to the caller; null when the document is no object, has no such section,
///         or something else than an array in its place. What is wrong inside the section is logged by the
///         section's own reader.
ExcPMIDataPtr readPMIData(const JsonValue& mechanicalData);
/// The mapping of entities, which blocks have under "mapping_data"; otherwise as readPMIData().
ExcMappingDataPtr readMappingData(const JsonValue& mechanicalData);
/// The entity data, which blocks have under "entity_data"; otherwise as readPMIData().
ExcEntityDataPtr readEntityData(const JsonValue& mechanicalData);

/// Loads an object that was read with delayed loading, and when it is mechanical data, with all its sections.
///
/// Used in place of IExchangeObject::load(), which this is for all other kinds of objects. The content of the
/// shared buffer is read once, and the buffer is removed, whatever happens; the object is loaded afterwards, and
/// load() does nothing any more. The sections that the content has become those of the object, the others
/// stay. Without delayed loading it is too late: for an object that is loaded already, as for one without a
/// source(), nothing is done.
///
///     zeq::ExchangeObjectWrapper wrapper;
///     wrapper.setDelayedLoading(true);
///     wrapper.readObject(stream);
///     if (wrapper.get()) zeq::loadWithSections(*wrapper.get());
///     if (const auto block = std::dynamic_pointer_cast<zeq::ExcBlockMechanicalData>(wrapper.get()))
///         showAnnotations(block->blockId(), block->pmiData());
///
/// @throws as IExchangeObject::load(); the object is not loaded then, and its buffer is gone
void loadWithSections(IExchangeObject& object);

} // namespace zeq
