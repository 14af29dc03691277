#include "desk/host/DiretorioDeTrabalho.h"

#include "host/Falha.h"
#include "services/Disco.h"

#include <QFile>
#include <QTemporaryDir>

namespace mesa {

DiretorioDeTrabalho::DiretorioDeTrabalho(const std::filesystem::path &dados) : m_Caminho(dados)
{
    if (!std::filesystem::exists(dados) || PodeGravar(dados)) {
        return; // a directory that is not there yet is made
    }
    m_Temporario = std::make_unique<QTemporaryDir>();
    if (!m_Temporario->isValid()) {
        throw Falha(NumeroFalha::ErroDeAcesso, "DiretorioDeTrabalho",
                    "O diretório " + dados.string() +
                        " só pode ser lido, e não foi possível fazer um temporário para os arquivos da mesa.");
    }
    m_Caminho = QFile::encodeName(m_Temporario->path()).toStdString();
}

DiretorioDeTrabalho::~DiretorioDeTrabalho() = default;

} // namespace mesa
