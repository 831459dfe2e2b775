#pragma once
// The one way the program speaks to the user: information and warning boxes
// and yes/no questions, each with a title and an icon. Logic code talks to
// this interface only; the desktop program shows real boxes, tests script the
// answers and read back what was shown.

#include <string>
#include <string_view>

namespace rw {

enum class MsgIcon { None, Information, Exclamation, Critical, Question };

// The answer to "Save changes to ...?".
enum class SaveAnswer { Save, DontSave, Cancel };

class Messages {
public:
    virtual ~Messages() = default;
    // A box with an OK button.
    virtual void show(std::string_view title, std::string_view text, MsgIcon icon) = 0;
    // A box with Yes and No buttons; true for Yes.
    virtual bool ask(std::string_view title, std::string_view text, MsgIcon icon) = 0;
    // A box with Save, Don't Save and Cancel buttons (Save the default,
    // Escape for Cancel). A speaker that cannot offer Cancel asks Yes/No.
    virtual SaveAnswer askSave(std::string_view title, std::string_view text)
    {
        return ask(title, text, MsgIcon::Question) ? SaveAnswer::Save : SaveAnswer::DontSave;
    }
    // The system beep.
    virtual void beep() { }
};

// The program's usual warning: title "WARNING", exclamation icon.
inline void Warn(Messages& m, std::string_view text)
{
    m.show("WARNING", text, MsgIcon::Exclamation);
}

}  // namespace rw
