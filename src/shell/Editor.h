#pragma once

#include <string>
#include <string_view>

namespace lapvane {

/// The controls of an editor whose record the link reads and fills, each under its name; an element
/// of a control array has its index behind the name ("txtLed0"). What is set here runs the
/// control's own handlers, as a click would.
class ControlliEditor {
 public:
    virtual ~ControlliEditor() = default;
    /// The text of a box (Windows-1252).
    virtual std::string Testo(std::string_view controllo) const = 0;
    virtual void Testo(std::string_view controllo, const std::string& testo) = 0;
    /// The chosen entry of a list, -1 for none. An index that the list does not have sets none.
    virtual int Indice(std::string_view controllo) const = 0;
    virtual void Indice(std::string_view controllo, int indice) = 0;
    /// A check box, or an element of the page flags ("PagineAbilitateTemp0" is page 1).
    virtual bool Spunta(std::string_view controllo) const = 0;
    virtual void Spunta(std::string_view controllo, bool accesa) = 0;
    /// Enabled on a white background, disabled on a grey one.
    virtual void Abilita(std::string_view controllo, bool acceso) = 0;
};

/// What the poll and the device routines know of an open editor.
class Editor {
 public:
    virtual ~Editor() = default;
    /// The form's name ("frmSensori").
    virtual std::string_view Nome() const = 0;
    /// Switches the buttons that need the instrument.
    virtual void AbilitaStrumento(bool presente) = 0;
    /// The controls that show one of the records of the instrument; null where there are none.
    virtual ControlliEditor* Controlli() { return nullptr; }
};

}  // namespace lapvane
