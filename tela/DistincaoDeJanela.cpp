#include "tela/DistincaoDeJanela.h"

std::string IdentidadeDaJanela(const IForm &form, const DistincaoDeJanela &qual)
{
    const std::string classe(form.NomeTipo());
    return qual.Chave.empty() ? classe : classe + "." + qual.Chave;
}

std::string TextoDaMoldura(const std::string &texto, const DistincaoDeJanela &qual)
{
    return qual.Texto.empty() ? texto : texto + " - " + qual.Texto;
}
