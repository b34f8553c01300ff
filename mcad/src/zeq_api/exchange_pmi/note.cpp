// The JSON forms of notes and their texts.
#include "zeq_api/exchange_pmi/note.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_pmi/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

constexpr const char* nullText = "ExcPMINote: attempt to add null text.";

} // namespace

const EnumTable& enumTable(ExcPMINote::Text::EFontType) {
    using enum ExcPMINote::Text::EFontType;
    static constexpr EnumEntry names[] = {{simplex, L"simplex"},       {din, L"din"},
                                          {military, L"military"},     {ISO, L"ISO"},
                                          {light_line, L"light_line"}, {century, L"century"},
                                          {IGES_1001, L"IGES_1001"},   {IGES_1002, L"IGES_1002"},
                                          {IGES_1003, L"IGES_1003"}};
    static const EnumTable table{"ExcPMINote::Text::EFontType", names};
    return table;
}

struct ExcPMINote::Text::JsonForm {
    using This = ExcPMINote::Text;
    static constexpr json::Form form{
        json::Head{"ExcPMINote::Text", area::exchangePmi},
        json::field(L"label", &This::m_label),
        json::field(L"font_name", &This::m_fontName),
        json::field(L"font_type", &This::m_fontType),
        json::field(L"fixed_pitch", &This::m_fixedPitch),
        json::field(L"height", &This::m_height),
        json::field(L"bold", &This::m_bold),
        json::field(L"italic", &This::m_italic),
        json::field(L"underline", &This::m_underline),
        json::field(L"strike_through", &This::m_strikeThrough),
        json::field(L"overline", &This::m_overline),
        json::field(L"ratio", &This::m_ratio),
        json::field(L"slant", &This::m_slant),
        json::field(L"color", &This::m_color),
    };
};

ZEQ_JSON_OBJECT(ExcPMINote::Text)

struct ExcPMINote::JsonForm {
    using This = ExcPMINote;
    static constexpr json::Form form{
        json::Head{"ExcPMINote", area::exchangePmi},
        json::base<ExcPMIAnnotation>,
        json::children(L"texts", &This::m_texts, json::matchingElements, json::always),
        json::field(L"is_flag_note", &This::m_isFlagNote),
        json::field(L"is_noa", &This::m_isNoa),
    };
};

ZEQ_JSON_OBJECT(ExcPMINote)

void ExcPMINote::addText(const TextPtr& text) { detail::appendChild(m_texts, text, nullText); }

void ExcPMINote::addTexts(const std::vector<TextPtr>& texts) { detail::appendEach(m_texts, texts, nullText); }

void ExcPMINote::setTexts(const std::vector<TextPtr>& texts) {
    detail::setChildren(m_texts, texts, nullText);
}

} // namespace zeq
