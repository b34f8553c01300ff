// The units that a drawing may be in.
#pragma once

/// The drawing database.
namespace OdDb {

/// Unit of length of a drawing, by the drawing database's own values.
enum class UnitsValue {
    undefined,
    inches,
    feet,
    miles,
    millimeters,
    centimeters,
    meters,
    kilometers,
    microinches,
    mils,
    yards,
    angstroms,
    nanometers,
    microns,
    decimeters,
    dekameters,
    hectometers,
    gigameters,
    astronomical,
    light_years,
    parsecs,
    us_survey_feet,
    us_survey_inch,
    us_survey_yard,
    us_survey_mil
};

} // namespace OdDb
