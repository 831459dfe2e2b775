#include "shell/mainwindow.h"

namespace rw {

MainCommand ToolbarCommand(std::string_view key, Messages& msgs)
{
    struct Key {
        std::string_view name;
        MainCommand command;
    };
    static constexpr Key kKeys[]
        = {{"New", MainCommand::New},   {"Open", MainCommand::Open},   {"Save", MainCommand::Save},
           {"View", MainCommand::View}, {"Print", MainCommand::Print}, {"Help", MainCommand::Help},
           {"Exit", MainCommand::Exit}};
    for (const Key& k : kKeys)
        if (k.name == key)
            return k.command;
    Warn(msgs, std::string("The program does not understand ") + "the toolbar choice. Please let "
                   + "Brindlecote technical support know at support@brindlecote.example, naming "
                     "the button "
                     "you pressed.");
    return MainCommand::Unknown;
}

void TopMenuOpened(Session& s)
{
    s.menus.note.clear();
}

void BeforePayments(const Session& s, Messages& msgs)
{
    if (IsYes(s.kase.init.bPayroll))
        return;
    Warn(msgs, "Since a payment's allocation between tax, penalty and interest is dependent upon "
               "prior penalties, other "
               "additions to tax and previous payments, it is critical that you enter all "
               "penalties and other charges "
               "before you enter payments.  Payments must be entered in chronological order.  If "
               "these guidelines are "
               "not followed, results will probably be inaccurate.");
}

bool BeforePayroll(const Session& s, Messages& msgs)
{
    if (IsYes(s.kase.init.bPayroll))
        return true;
    Warn(
        msgs,
        "To run payroll penalties, the Initial Inputs window must have Payroll Tax indicated Yes.");
    return false;
}

void HelpOnHelp(Messages& msgs)
{
    msgs.show("Help on Help",
              "The help file is a searchable PDF file. Menu choice Help - Contents.",
              MsgIcon::Information);
}

}  // namespace rw
