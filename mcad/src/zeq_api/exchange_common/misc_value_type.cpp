// The names of the quantities.
#include "zeq_api/exchange_common/misc_value_type.h"

#include <array>
#include <iterator>
#include <utility>

namespace zeq {

namespace {

/// In the order of the values.
// clang-format off
constexpr const wchar_t* names[] = {
    L"unknown_value_type", L"length", L"angle", L"time", L"mass", L"volume", L"density", L"area",
    L"inertiamoment", L"energy", L"force", L"inertia", L"massflow", L"moment", L"pressure", L"rstifnes",
    L"rstifnes", L"linemass", L"tstifnes", L"vol_flow", L"frequency", L"power", L"voltage", L"resistance",
    L"courant", L"accelrtn", L"angaccelrtn", L"energymec", L"volforce", L"surfacicmass", L"speed",
    L"linearfeedrate", L"angularfeedrate", L"linearspindlespeed", L"angularspindlespeed",
    L"angularspindlespeed", L"mole", L"heattransferresistance", L"heattransfer", L"molecularflow",
    L"moleculardensity", L"enthalpy", L"entropy", L"molecularenthalpy", L"molecularentropy",
    L"molecularentropy", L"dynamicviscosity", L"molecularweight", L"absoluteviscosity",
    L"kinematicviscosity", L"massicflow", L"thermalconductivity", L"rpm", L"velocity_over_force",
    L"acceleration_over_force", L"pressure_over_force", L"pressure_over_normal_velocity",
    L"pressure_over_volume_velocity", L"pulsation", L"modal_damping", L"viscous_damping",
    L"modal_participation_factor", L"modal_mass", L"dimensionless", L"displacement_over_force",
    L"acceleration_over_moment", L"velocity_over_moment", L"displacement_over_moment",
    L"rotation_over_force", L"pulsation_over_force", L"rotational_acceleration_over_force",
    L"rotation_over_moment", L"pulsation_over_moment", L"rotational_acceleration_over_moment",
    L"pressure_over_moment", L"force_over_displacement", L"force_over_rotation",
    L"moment_over_displacement", L"moment_over_rotation", L"pressure_over_displacement",
    L"pressure_over_rotation", L"force_over_velocity", L"force_over_pulsation", L"moment_over_velocity",
    L"moment_over_pulsation", L"pressure_over_pulsation", L"force_over_acceleration",
    L"force_over_rotational_acceleration", L"moment_over_acceleration",
    L"moment_over_rotational_acceleration", L"pressure_over_acceleration",
    L"pressure_over_rotational_acceleration", L"force_over_pressure", L"moment_over_pressure",
    L"displacement_over_pressure", L"velocity_over_pressure", L"acceleration_over_pressure",
    L"rotation_over_pressure", L"pulsation_over_pressure", L"rotational_acceleration_over_pressure",
    L"force_over_volume_velocity", L"moment_over_volume_velocity", L"displacement_over_volume_velocity",
    L"velocity_over_volume_velocity", L"acceleration_over_volume_velocity",
    L"rotation_over_volume_velocity", L"pulsation_over_volume_velocity",
    L"rotational_acceleration_over_volume_velocity", L"force_over_volume_acceleration",
    L"moment_over_volume_acceleration", L"displacement_over_volume_acceleration",
    L"velocity_over_volume_acceleration", L"acceleration_over_volume_acceleration",
    L"rotation_over_volume_acceleration", L"pulsation_over_volume_acceleration",
    L"rotational_acceleration_over_volume_acceleration", L"jerk", L"angularjerk", L"momentum",
    L"hertzsquare", L"hertzcube", L"per_angle", L"per_angle_square", L"acoustic_monopole_amplitude",
    L"acoustic_dipole_amplitude", L"acoustic_quadrupole_amplitude", L"volume_acceleration", L"intensity",
    L"square_velocity", L"square_pressure", L"flow_resistivity", L"convective_film_coefficient",
    L"heat_rate", L"heat_flux", L"angular_velocity", L"cumulative_moment", L"curvature", L"square_time",
    L"volume_velocity", L"pressure_over_volume_acceleration", L"square_force", L"square_moment",
    L"square_displacement", L"square_rotation", L"square_pulsation", L"square_acceleration",
    L"square_rotational_acceleration", L"square_volume_acceleration", L"square_volume_velocity",
    L"solid_angle", L"volume_acceleration_over_force", L"volume_acceleration_over_moment",
    L"volume_velocity_over_force", L"volume_velocity_over_moment", L"volume_acceleration_over_acceleration",
    L"volume_velocity_over_acceleration", L"volume_acceleration_over_rotational_acceleration",
    L"volume_velocity_over_rotational_acceleration", L"velocity_potential", L"pressure_over_time",
    L"volume_acceleration_over_displacement", L"volume_velocity_over_displacement",
    L"volume_acceleration_over_rotation", L"volume_velocity_over_rotation",
    L"volume_acceleration_over_velocity", L"volume_velocity_over_velocity",
    L"volume_acceleration_over_pulsation", L"volume_velocity_over_pulsation",
    L"power_spectral_density_pressure", L"power_spectral_density_displacement",
    L"power_spectral_density_velocity", L"power_spectral_density_acceleration", L"power_spectral_density",
    L"accelerationxpressure", L"velocityxpressure", L"accelerationxforce", L"velocityxforce",
    L"pressurexforce", L"accelerationxvolume_acceleration", L"velocityxvolume_acceleration",
    L"displacementxvolume_acceleration", L"displacementxvolume_velocity", L"illumination", L"lumen",
    L"inverse_temprtre", L"power_spectral_density_rotation", L"power_spectral_density_rotational_velocity",
    L"power_spectral_density_rotational_acceleration", L"power_spectral_density_force",
    L"power_spectral_density_moment", L"pressure_over_area", L"inverse_square_pressure",
    L"pressurexforce_over_frequency", L"displacementxforce_over_frequency",
    L"square_volume_velocity_over_frequency", L"square_volume_acceleration_over_frequency", L"wave_length",
    L"luminous_flux", L"radiant_flux", L"lineic_absorption", L"ratio", L"radiance", L"illuminance",
    L"irradiance", L"luminous_intensity", L"radiant_intensity", L"heat_generation_rate", L"exothermy",
    L"acoustic_power", L"inverse_velocity", L"warping_coefficient", L"specific_heat_capacity_linear_part",
    L"specific_heat_capacity_quadratic_part", L"specific_heat_capacity_cubic_part", L"torque",
    L"electrical_conductivity", L"magnetic_permeability", L"current_density", L"joule_heating",
    L"wavenumber", L"circularwavenumber", L"dampingcoefficient", L"logarithmicdecrement",
    L"attenuationcoefficient", L"phasecoefficient", L"propagationcoefficient", L"specificvolume",
    L"angularmomentum", L"electricaltorqueconstant", L"sectionmodulus", L"surfacetension", L"energydensity",
    L"angularmomentumflux", L"temperaturedifference", L"temperatureslope",
    L"quadratictemperaturecoefficient", L"pressurecoefficient", L"compressibility",
    L"densityofheatflowrate", L"thermalinsulance", L"thermalresistance", L"thermalconductance",
    L"thermaldiffusivity", L"heatcapacity_si", L"entropy_si", L"entropyflowrate", L"specificenergy",
    L"derdensitybyenthalpy", L"derdensitybypressure", L"derdensitybytemperature", L"derenthalpybypressure",
    L"derenergybydensity", L"derenergybypressure", L"currentslope", L"electriccharge",
    L"volumedensityofcharge", L"surfacedensityofcharge", L"electricfieldstrength", L"voltageslope",
    L"electricfluxdensity", L"capacitance", L"permittivity", L"electricpolarization", L"electrization",
    L"electricdipolemoment", L"linearcurrentdensity", L"magneticfieldstrength", L"magneticfluxdensity",
    L"magneticfluxdensity", L"magneticvectorpotential", L"inductance", L"electromagneticmoment",
    L"magneticdipolemoment", L"magnetization", L"magneticpolarization", L"poyntingvector", L"resistivity",
    L"reluctance", L"permeance", L"conductance", L"apparentpower", L"reactivepower", L"transconductance",
    L"inversepotential", L"radiantenergy", L"spectralradiantenergydensity", L"radiantenergyfluencerate",
    L"quantityoflight", L"luminousexitance", L"lightexposure", L"luminousefficacy",
    L"molarabsorptioncoefficient", L"acousticimpedance", L"specificacousticimpedance",
    L"mechanicalimpedance", L"soundpowerlevel", L"loundnesslevel", L"loundness", L"numberofmolecules",
    L"molarvolume", L"molarinternalenergy", L"molarheatcapacity", L"numberdensity", L"numberdensity",
    L"fugacity", L"osmoticpressure", L"affinity", L"electricpolarizabilityofamolecule", L"faradayconstant",
    L"ionicstrength", L"molarconductivity", L"bohrmagneton", L"nuclearmagneton", L"gyromagneticcoefficient",
    L"nuclearquadrupolemoment", L"levelwidth", L"radioactivity", L"specificactivity", L"decayconstant",
    L"angularcrosssection", L"spectralcrosssection", L"spectralangularcrosssection",
    L"macroscopiccrosssection", L"particlefluence", L"particlefluencerate", L"energyfluence",
    L"currentdensityofparticles", L"massattenuationcoefficient", L"atomicattenuationcoefficient",
    L"totallinearstoppingpower", L"totalatomicstoppingpower", L"totalmassstoppingpower", L"meanmassrange",
    L"linearionization", L"mobility", L"recombinationcoefficient", L"neutronfluencerate",
    L"totalneutronsourcedensity", L"slowingdowndensity", L"absorbeddose", L"specificenergyimparted",
    L"doseequivalent", L"absorbeddoserate", L"linearenergytransfer", L"kerma", L"kermarate",
    L"massenergytransfercoefficient", L"exposure", L"exposurerate", L"spectralconcentration",
    L"densityofstates", L"lorenzcoefficient", L"hallcoefficient", L"seebeckcoefficient",
    L"thomsoncoefficient", L"richardsonconstant", L"fermienergy", L"fluxiodquantum",
    L"surface_power_density", L"power_density", L"displacement_over_voltage", L"velocity_over_voltage",
    L"acceleration_over_voltage", L"voltage_over_displacement", L"voltage_over_velocity",
    L"voltage_over_acceleration", L"pressure_over_voltage", L"voltage_over_pressure", L"rate",
    L"strain_rate", L"specific_heat_per_unit_volume", L"powerbis", L"molarconcentration",
    L"thermaltransmittance", L"temperature_over_pressure", L"specificvolume_over_temperature",
    L"mole_per_mass", L"mass_diffusivity", L"mass_flow_per_volume", L"density_square_angular_speed",
    L"density_angular_speed", L"pressure_over_square_time", L"acoustic_intensity", L"heat_flux_area",
    L"arc_length", L"displacement", L"thickness", L"stress", L"turbulent_energy_dissipation_rate",
    L"energy_release_rate", L"force_per_length", L"heat_generation_density", L"mass_flux", L"omega_squared",
    L"pressure_gradient", L"twist", L"time_integrated_electric_current_per_area", L"heat_flow_per_volume",
    L"sound_pressure_level", L"specific_e_absorption_rate", L"energy_per_area",
    L"hydrodynamic_resistance_coefficient", L"moment_per_length", L"quietness_index",
    L"surfacic_damping_constant", L"mass_fraction", L"specific_surface_area",
    L"linear_mass_density_of_fibers", L"hardness", L"transmission", L"wave_front_error", L"roughness",
    L"flatness", L"hygrometry", L"frequency_noise", L"stress_over_square_temperature",
    L"volumedensityofcurrent", L"concentrated_ion_concentration_flux",
    L"distributed_ion_concentration_surface_flux", L"distributed_ion_concentration_body_flux",
    L"temperature_gradient"
};
// clang-format on

template <int... values>
constexpr std::array<EnumEntry, sizeof...(values)> number(std::integer_sequence<int, values...>) {
    return {EnumEntry(static_cast<EMiscValueType>(values), names[values])...};
}

constexpr auto entries = number(std::make_integer_sequence<int, std::size(names)>());

} // namespace

const EnumTable& enumTable(EMiscValueType) {
    static const EnumTable table{"ExcMiscProperty::EValueType", entries};
    return table;
}

} // namespace zeq
