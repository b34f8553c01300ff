// Attributes that tag entities of the kernel, so that host and translator mean the same face or edge. Objects
// are used by one thread at a time.
#pragma once

#include <cstdio>

#include "platform/acis/acis.h"

/// The parent of the attributes of the Morvanta Convexor; has no data.
class ATTRIB_CONVEXOR : public ATTRIB {
public:
    explicit ATTRIB_CONVEXOR(ENTITY* owner = nullptr);

    static const restore_def& definition();
    static int staticType() { return definition().type(); }

    /// Levels 0 and 2 give this class, 1 and the negative ones its ancestors; -1 above.
    int identity(int level = 0) const override;
    const char* type_name() const override;
    unsigned size() const override;
    logical is_deepcopyable() const override;
    void debug_ent(FILE* file) const override;
    void save(ENTITY_LIST& list) const override;
    void save_common(ENTITY_LIST& list) const override;
    ENTITY* copy_data(ENTITY_LIST& list, pointer_map* map = nullptr, logical dpcpySkip = false,
                      SCAN_TYPE reason = SCAN_COPY) const override;

    /// Sets what the class does when the method is called; a class derived from it may have its own.
    static void add_method(const METHOD_ID& id, METHOD_FUNCTION function);
    /// What the function returns; 0 if there is none, or the arguments are of another type than the method's.
    int call_method(const METHOD_ID& id, const METHOD_ARGS& args) override;

protected:
    ~ATTRIB_CONVEXOR() override = default;
};

/// Whether the entity is of that class or one derived from it.
logical is_ATTRIB_CONVEXOR(const ENTITY* entity);

/// Carries a number, whose meaning host and translator agree on, on its owner.
class ATTRIB_CONVEXOR_ID : public ATTRIB_CONVEXOR {
public:
    /// With the number 0 and the kernel's own owner actions.
    explicit ATTRIB_CONVEXOR_ID(ENTITY* owner = nullptr);
    /// The number stays with the owner through all changes, and its copies get it too.
    ATTRIB_CONVEXOR_ID(ENTITY* owner, long id);

    long id() const { return m_id; }

    static const restore_def& definition();
    static int staticType() { return definition().type(); }

    /// Levels 0 and 3 give this class, the others its ancestors; -1 above.
    int identity(int level = 0) const override;
    const char* type_name() const override;
    unsigned size() const override;
    void debug_ent(FILE* file) const override;
    void save_common(ENTITY_LIST& list) const override;
    void restore_common() override;
    ENTITY* copy_data(ENTITY_LIST& list, pointer_map* map = nullptr, logical dpcpySkip = false,
                      SCAN_TYPE reason = SCAN_COPY) const override;

    static void add_method(const METHOD_ID& id, METHOD_FUNCTION function);
    /// Looks in its own methods first, then in those of ATTRIB_CONVEXOR.
    int call_method(const METHOD_ID& id, const METHOD_ARGS& args) override;

protected:
    ~ATTRIB_CONVEXOR_ID() override = default;

private:
    long m_id = 0;
};

/// Whether the entity is of that class or one derived from it.
logical is_ATTRIB_CONVEXOR_ID(const ENTITY* entity);
