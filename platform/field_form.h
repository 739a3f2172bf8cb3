#pragma once

#include <map>
#include <string>
#include <string_view>

namespace varo {

// A screen's entries and text labels as its logic sees them, reached through that screen's own
// field enum, so a misspelt field does not compile. Each screen keeps one table from its fields
// to the control names its widgets carry.
template <typename FieldEnum>
class FieldForm {
  public:
    using Field = FieldEnum;
    virtual ~FieldForm() = default;
    virtual std::string Text(Field field) const = 0;
    virtual void SetText(Field field, std::string_view text) = 0;
};

// A form whose fields are plain texts: the command line's screens and the tests' stand-ins.
// `Form` is a screen's form interface (derived from FieldForm); its other operations keep their
// defaults or are added by the deriving class.
template <typename Form>
class TextFields : public Form {
  public:
    using Field = typename Form::Field;
    std::string Text(Field field) const override {
        const auto found = texts_.find(field);
        return found == texts_.end() ? std::string() : found->second;
    }
    void SetText(Field field, std::string_view text) override { texts_[field] = std::string(text); }

  private:
    std::map<Field, std::string> texts_;
};

}  // namespace varo
