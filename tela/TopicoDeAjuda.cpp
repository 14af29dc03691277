#include "tela/TopicoDeAjuda.h"

#include "host/IControlesPadrao.h"
#include "tela/Mnemonicas.h"

std::string TopicoDeAjuda(const IForm &form)
{
    const std::string topico(form.NomeTipo());
    for (const Ref<IControle> &controle : form.Controles()) {
        if (const auto *abas = dynamic_cast<const ISSTab *>(controle.Ponteiro())) {
            return topico + "." + SemMarca(abas->TabCaption(abas->Tab()));
        }
    }
    return topico;
}
