#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>

namespace tobbin {

// What the program wants to know of a song's tags.
enum class TagField { Artist, Album, Title, Year, Genre };

constexpr std::array kTagFields = {TagField::Artist, TagField::Album, TagField::Title,
                                   TagField::Year, TagField::Genre};

// A set of fields.
class TagFields {
 public:
    TagFields() = default;
    TagFields(std::initializer_list<TagField> fields) {
        for (const TagField field : fields)
            Add(field);
    }
    static TagFields All() {
        TagFields all;
        for (const TagField field : kTagFields)
            all.Add(field);
        return all;
    }
    // What the automatic groups file songs by.
    static TagFields ForFiling() { return {TagField::Artist, TagField::Year, TagField::Genre}; }

    bool Has(TagField field) const { return (m_bits & Bit(field)) != 0; }
    bool IsEmpty() const { return m_bits == 0; }
    void Add(TagField field) { m_bits |= Bit(field); }
    void Remove(TagField field) { m_bits &= ~Bit(field); }

 private:
    static unsigned Bit(TagField field) { return 1U << static_cast<unsigned>(field); }
    unsigned m_bits = 0;
};

// The text of each field; empty where there is none.
class TagTexts {
 public:
    std::string& operator[](TagField field) { return m_texts[static_cast<std::size_t>(field)]; }
    const std::string& operator[](TagField field) const {
        return m_texts[static_cast<std::size_t>(field)];
    }
    bool operator==(const TagTexts&) const = default;

 private:
    std::array<std::string, kTagFields.size()> m_texts;
};

}  // namespace tobbin
