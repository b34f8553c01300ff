/// @file
/// Where images go to and come from, what their header says, and the functions with which entities write and
/// read their own records.
#pragma once

#include "platform/acis/position.h"
#include <cstddef>
#include <string>
#include <string_view>

class ENTITY;
class ENTITY_LIST;
using logical = int;
using FilePosition = long long;

/// A stream of bytes that an image is saved to or restored from. Saving writes the whole image with one call;
/// restoring reads until it has everything, and moves back behind the image if more follows it.
class BinaryFile {
public:
    virtual ~BinaryFile() = default;

    /// Appends `length` bytes. The last argument is the kernel's, and of no meaning here.
    virtual void write(const void* data, std::size_t length, int) = 0;
    /// Takes at most `length` bytes and says how many; fewer only at the end.
    virtual std::size_t read(void* data, std::size_t length, int) = 0;
    virtual FilePosition set_mark() = 0;
    virtual void goto_mark(FilePosition mark) = 0;
};

/// Which fields of a FileInfo to install.
enum FileInfoFields : unsigned long {
    FileIdent = 1, ///< the product id
    FileUnits = 2, ///< the units
};

/// What the header of an image says about its maker.
class FileInfo {
public:
    const std::string& product_id() const { return m_productId; }
    void set_product_id(std::string productId) { m_productId = std::move(productId); }
    /// Millimetres in a unit of length.
    double units() const { return m_units; }
    void set_units(double units) { m_units = units; }

    /// The following are what a restored image said; saving writes its own.
    int file_version() const { return m_fileVersion; }
    void set_file_version(int version) { m_fileVersion = version; }
    const std::string& acis_version() const { return m_acisVersion; }
    void set_acis_version(std::string version) { m_acisVersion = std::move(version); }
    const std::string& date() const { return m_date; }
    void set_date(std::string date) { m_date = std::move(date); }
    /// The distance and the direction below which the maker took things as equal.
    double tol_abs() const { return m_tolAbs; }
    void set_tol_abs(double tolerance) { m_tolAbs = tolerance; }
    double tol_nor() const { return m_tolNor; }
    void set_tol_nor(double tolerance) { m_tolNor = tolerance; }

private:
    std::string m_productId;
    double m_units = -1;
    int m_fileVersion = 0;
    std::string m_acisVersion;
    std::string m_date;
    double m_tolAbs = SPAresabs;
    double m_tolNor = 1e-10;
};

/// @name Writing the record at hand
/// Only inside ENTITY::save_common and what it calls.
/// @{
/// Writes an external name of the record's class chain; level 1 ends the chain.
void write_id_level(const char* name, int level);
void write_int(int value);
/// 64 bits survive: an image with a value beyond 32 bits uses the wide variant of the format.
void write_long(long value);
void write_real(double value);
void write_logical(logical value);
void write_enum(int value);
void write_string(std::string_view text);
void write_position(const SPAposition& position);
void write_vector(const SPAvector& vector);
/// Writes the record index of an entity and puts the entity on the list of what is yet to be saved.
void write_ptr(const ENTITY* entity, ENTITY_LIST& list);
/// @}

/// @name Reading the record at hand
/// Only inside a restore function and what it calls. The next token has to be of the asked kind; otherwise
/// they fail with an exception that api_restore_entity_list_file turns into its outcome.
/// @{
int read_int();
long read_long();
double read_real();
logical read_logical();
int read_enum();
std::string read_string();
SPAposition read_position();
SPAvector read_vector();
/// A record index in the shape of a pointer; ENTITY::fix_pointers makes it a real one.
ENTITY* read_ptr();
/// @}
