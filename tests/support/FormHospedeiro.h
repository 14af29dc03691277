#pragma once

#include "tests/support/FormFalso.h"
#include "tests/support/RegistroChamadas.h"

#include <cstdint>
#include <string>

// A window of the host's own: what it wraps around a form of the module. Bringing it to the front is noted in the log
// as "frmHospedeiro.ZOrder(0)".
class FormHospedeiro : public FormSemParent {
  public:
    FormHospedeiro(RefRegistro registro, std::int64_t hwnd) : m_Registro(std::move(registro)), m_hwnd(hwnd) {}

    std::string_view NomeTipo() const override { return "frmHospedeiro"; }
    void SetFocus() override { m_Registro->Nota("frmHospedeiro.SetFocus()"); }
    bool MDIChild() const override { return true; }
    std::int64_t hwnd() const override { return m_hwnd; }
    void ZOrder(std::int16_t posicao) override
    {
        m_Registro->Nota("frmHospedeiro.ZOrder(" + std::to_string(posicao) + ")");
    }

  private:
    RefRegistro m_Registro;
    std::int64_t m_hwnd;
};
