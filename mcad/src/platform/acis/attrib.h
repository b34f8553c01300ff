/// @file
/// Attributes: what applications hang on entities, and what happens to it when its owner is copied, split or
/// changed.
#pragma once

#include "platform/acis/entity.h"
#include <functional>
#include <map>
#include <string>
#include <tuple>

/// @name What becomes of an attribute when something happens to its owner
/// "Keep" leaves it where it is.
/// @{
enum split_owner_action {
    SplitLose = 0,
    SplitKeep = 1,
    SplitCopy = 2, ///< the new part gets a copy
    SplitCustom = 3
};
enum merge_owner_action {
    MergeLose = 0,
    MergeKeepKept = 1, ///< keep those of the surviving owner
    MergeKeepLost = 2,
    MergeKeepOne = 3,
    MergeKeepAll = 4,
    MergeCustom = 5
};
enum trans_owner_action {
    TransLose = 0,
    TransIgnore = 1,
    TransApply = 2, ///< transform the attribute too
    TransCustom = 3
};
enum copy_owner_action {
    CopyLose = 0, ///< the original loses it
    CopyKeep = 1, ///< the copy gets none
    CopyCopy = 2, ///< the copy gets one too
    CopyCustom = 3
};
enum reverse_owner_action {
    ReverseLose = 0,
    ReverseKeep = 1,
    ReverseApply = 2,
    ReverseCustom = 3
};
enum rep_owner_geom_action {
    RepOwnerGeomLose = 0,
    RepOwnerGeomKeep = 1,
    RepOwnerGeomCustom = 2
};
enum warp_owner_action {
    WarpLose = 0,
    WarpKeep = 1,
    WarpCustom = 2
};
enum lop_change_owner_action {
    LopChangeLose = 0,
    LopChangeKeep = 1,
    LopChangeCustom = 2
};
/// @}

/// Names a method of attribute classes and the type of arguments that it takes.
class METHOD_ID {
public:
    METHOD_ID(std::string name, std::string argsType)
        : m_name(std::move(name)), m_argsType(std::move(argsType)) {}
    const std::string& name() const { return m_name; }
    const std::string& args_type() const { return m_argsType; }
    friend bool operator<(const METHOD_ID& a, const METHOD_ID& b) {
        return std::tie(a.m_name, a.m_argsType) < std::tie(b.m_name, b.m_argsType);
    }

private:
    std::string m_name;
    std::string m_argsType;
};

/// The arguments of a method call; applications derive from it.
class METHOD_ARGS {
public:
    virtual ~METHOD_ARGS() = default;
    /// The name to compare with METHOD_ID::args_type.
    virtual const char* class_name() const = 0;
};

using METHOD_FUNCTION = std::function<int(ATTRIB*, const METHOD_ARGS&)>;

/// The methods of one attribute class.
class METHOD_TABLE {
public:
    /// A function that the table has for the same method is replaced.
    void add_method(const METHOD_ID& id, METHOD_FUNCTION function);
    /// Null if there is none.
    const METHOD_FUNCTION* lookup(const METHOD_ID& id) const;

private:
    std::map<METHOD_ID, METHOD_FUNCTION> m_methods;
};

/// The base of all attributes. Those of one owner are chained, the latest first.
class ATTRIB : public entity_of<ATTRIB, ENTITY> {
public:
    static constexpr const char* external_name = "attrib";

    /// Puts itself first on its owner's chain; without an owner it stands alone.
    explicit ATTRIB(ENTITY* owner = nullptr);

    ATTRIB* next() const { return m_next; }
    ATTRIB* previous() const { return m_previous; }
    ENTITY* owner() const { return m_owner; }

    /// Takes itself off its owner's chain.
    void unhook();
    void lose() override;
    /// Has no methods: 0.
    int call_method(const METHOD_ID& id, const METHOD_ARGS& args) override;

    split_owner_action get_split_owner_action() const { return m_split; }
    void set_split_owner_action(split_owner_action action) { m_split = action; }
    merge_owner_action get_merge_owner_action() const { return m_merge; }
    void set_merge_owner_action(merge_owner_action action) { m_merge = action; }
    trans_owner_action get_trans_owner_action() const { return m_trans; }
    void set_trans_owner_action(trans_owner_action action) { m_trans = action; }
    copy_owner_action get_copy_owner_action() const { return m_copy; }
    void set_copy_owner_action(copy_owner_action action) { m_copy = action; }
    reverse_owner_action get_reverse_owner_action() const { return m_reverse; }
    void set_reverse_owner_action(reverse_owner_action action) { m_reverse = action; }
    rep_owner_geom_action get_rep_owner_geom_action() const { return m_repGeom; }
    void set_rep_owner_geom_action(rep_owner_geom_action action) { m_repGeom = action; }
    warp_owner_action get_warp_owner_action() const { return m_warp; }
    void set_warp_owner_action(warp_owner_action action) { m_warp = action; }
    lop_change_owner_action get_lop_change_owner_action() const { return m_lopChange; }
    void set_lop_change_owner_action(lop_change_owner_action action) { m_lopChange = action; }

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    ATTRIB* m_next = nullptr;
    ATTRIB* m_previous = nullptr;
    ENTITY* m_owner = nullptr;
    split_owner_action m_split = SplitKeep;
    merge_owner_action m_merge = MergeKeepKept;
    trans_owner_action m_trans = TransIgnore;
    copy_owner_action m_copy = CopyKeep;
    reverse_owner_action m_reverse = ReverseKeep;
    rep_owner_geom_action m_repGeom = RepOwnerGeomKeep;
    warp_owner_action m_warp = WarpKeep;
    lop_change_owner_action m_lopChange = LopChangeKeep;
};
inline logical is_ATTRIB(const ENTITY* entity) { return is_entity<ATTRIB>(entity); }

/// The parent of the attributes that stem from the kernel's maker.
class ATTRIB_ST : public entity_of<ATTRIB_ST, ATTRIB> {
public:
    static constexpr const char* external_name = "st";
    explicit ATTRIB_ST(ENTITY* owner = nullptr);

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);
};
inline logical is_ATTRIB_ST(const ENTITY* entity) { return is_entity<ATTRIB_ST>(entity); }

/// The colour of its owner; parts from 0 to 1. A copy of its owner gets one too.
class ATTRIB_RGB : public entity_of<ATTRIB_RGB, ATTRIB_ST> {
public:
    static constexpr const char* external_name = "rgb_color";
    explicit ATTRIB_RGB(ENTITY* owner = nullptr, double red = 0, double green = 0, double blue = 0);

    double red() const { return m_red; }
    double green() const { return m_green; }
    double blue() const { return m_blue; }
    void set_color(double red, double green, double blue);

private:
    friend entity_of;
    template <class Visitor, class... Object>
    static void walk(Visitor& visitor, Object&... object);

    double m_red = 0;
    double m_green = 0;
    double m_blue = 0;
};
inline logical is_ATTRIB_RGB(const ENTITY* entity) { return is_entity<ATTRIB_RGB>(entity); }
