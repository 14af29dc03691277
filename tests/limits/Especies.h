#pragma once

#include <cstdint>
#include <string>

// A kind of row, as the windows and the service tell it.
struct Especie {
    std::int16_t Tipo;
    std::string Descr;
    // Operations of the service, and the form's and the controller's procedures that call them.
    std::string Lista;
    std::string Consulta;
    std::string Inclui;
    std::string Altera;
    std::string Desativa;
    std::string Busca;
    std::string Salva;
    std::string Exclui;

    bool DeUmaData() const { return Tipo == 2; }
    bool ComVelocidade() const { return Tipo != 3; }
};

inline const Especie Especies[] = {
    {1, "Limite Diferenciado", "listaLimiteDif", "consultaSimplesLimiteDif", "alteraListaLimitesDif",
     "alteraListaLimitesDif", "desativaLimiteDif", "BuscaLimitesDif", "SalvaLimiteDif", "ExcluirLimiteDif"},
    {2, "Dia Específico", "listaDiaEspecifico", "consultaSimplesDiaEspecifico", "adicionaDiaEspecifico",
     "alteraDiaEspecifico", "desativaDiaEspecifico", "BuscaDiasEspec", "SalvaDiaEspec", "ExcluirDiaEspec"},
    {3, "Horário Proibido", "listaLimiteDif", "consultaSimplesLimiteDif", "alteraListaLimitesDif",
     "alteraListaLimitesDif", "desativaLimiteDif", "BuscaLimitesDif", "SalvaLimiteDif", "ExcluirLimiteDif"},
};
inline const Especie &Limite = Especies[0];
inline const Especie &DiaEspecifico = Especies[1];
inline const Especie &HorarioProibido = Especies[2];

// A person fills a new row of the kind; of one that has days, Monday's.
template <class QualquerPessoa> void Preenche(QualquerPessoa &p, const Especie &especie)
{
    if (especie.DeUmaData()) {
        p.Preenche("ztdData", "25122026");
    } else {
        p.Marca("chkDia", 2);
    }
    p.Preenche("ztmHInicial", "0730");
    p.Preenche("ztmHFinal", "1800");
    if (especie.ComVelocidade()) {
        p.Preenche("txtVelocPerm", "60");
    }
}
// The same with the holidays as a second day.
template <class QualquerPessoa> void PreencheDois(QualquerPessoa &p, const Especie &especie)
{
    Preenche(p, especie);
    if (!especie.DeUmaData()) {
        p.Marca("chkDia", 8);
    }
}
