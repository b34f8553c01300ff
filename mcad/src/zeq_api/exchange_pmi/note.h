// Notes: texts that are placed in an annotation view. Objects are used by one thread at a time.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "zeq_api/exchange_pmi/pmi_object.h"

namespace zeq {

/// A text note. A flag note and a note on all (NOA) are notes with a flag.
class ExcPMINote : public ExcPMIAnnotation {
public:
    /// A run of text in one style.
    class Text : public IJsonObject {
    public:
        enum class EFontType {
            simplex,
            din,
            military,
            ISO,
            light_line,
            century,
            IGES_1001,
            IGES_1002,
            IGES_1003
        };

        void readObject(const JsonValue& object) override;
        void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

        /// The text itself.
        const std::wstring& label() const { return m_label; }
        void setLabel(const std::wstring& label) { m_label = label; }

        const std::wstring& fontName() const { return m_fontName; }
        void setFontName(const std::wstring& name) { m_fontName = name; }

        EFontType fontType() const { return m_fontType; }
        void setFontType(EFontType type) { m_fontType = type; }

        bool fixedPitch() const { return m_fixedPitch; }
        void setFixedPitch(bool fixedPitch) { m_fixedPitch = fixedPitch; }

        double height() const { return m_height; }
        void setHeight(double height) { m_height = height; }

        bool bold() const { return m_bold; }
        void setBold(bool bold) { m_bold = bold; }

        bool italic() const { return m_italic; }
        void setItalic(bool italic) { m_italic = italic; }

        bool underline() const { return m_underline; }
        void setUnderline(bool underline) { m_underline = underline; }

        bool strikeThrough() const { return m_strikeThrough; }
        void setStrikeThrough(bool strikeThrough) { m_strikeThrough = strikeThrough; }

        bool overline() const { return m_overline; }
        void setOverline(bool overline) { m_overline = overline; }

        /// Width of a character to its height.
        double ratio() const { return m_ratio; }
        void setRatio(double ratio) { m_ratio = ratio; }

        double slant() const { return m_slant; }
        void setSlant(double slant) { m_slant = slant; }

        void getRGBA(double& r, double& g, double& b, double& a) const {
            r = m_color[0];
            g = m_color[1];
            b = m_color[2];
            a = m_color[3];
        }
        /// Red, green, blue and alpha; they live as long as the text.
        const double* getRGBA() const { return m_color.data(); }
        void setRGBA(double r, double g, double b, double a) { m_color = {r, g, b, a}; }

    private:
        struct JsonForm;

        std::wstring m_label;
        std::wstring m_fontName;
        EFontType m_fontType = EFontType::simplex;
        bool m_fixedPitch = false;
        double m_height = 0;
        bool m_bold = false;
        bool m_italic = false;
        bool m_underline = false;
        bool m_strikeThrough = false;
        bool m_overline = false;
        double m_ratio = 0;
        double m_slant = 0;
        std::array<double, 4> m_color{};
    };
    using TextPtr = std::shared_ptr<Text>;

    /// Appends to the texts.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    /// `note`, whatever the flags. // sic
    EPMIAnnotationType type() const override { return EPMIAnnotationType::note; }

    const std::vector<TextPtr>& texts() const { return m_texts; }
    void addText(const TextPtr& text);
    void addTexts(const std::vector<TextPtr>& texts);
    void setTexts(const std::vector<TextPtr>& texts);

    bool isFlagNote() const { return m_isFlagNote; }
    void setFlagNote(bool isFlagNote) { m_isFlagNote = isFlagNote; }

    /// Whether the note is about the whole product.
    bool isNOA() const { return m_isNoa; }
    void setNOA(bool isNoa) { m_isNoa = isNoa; }

private:
    struct JsonForm;

    std::vector<TextPtr> m_texts;
    bool m_isFlagNote = false;
    bool m_isNoa = false;
};
const EnumTable& enumTable(ExcPMINote::Text::EFontType);
using ExcPMINotePtr = std::shared_ptr<ExcPMINote>;

} // namespace zeq
