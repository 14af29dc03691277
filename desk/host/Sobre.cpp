#include "desk/host/Sobre.h"

#include "desk/host/Titulo.h"
#include "desk/host/Versao.h"
#include "services/TextoQt.h"

#include <QFile>
#include <QSysInfo>

#include <sqlite3.h>

namespace mesa {

std::string TextoDoSobre(const std::filesystem::path &dados, const std::string &registro)
{
    return std::string(TituloDosAvisos) + "\nVersão " + Versao() + "\nQt " + qVersion() + "\nSQLite " +
           sqlite3_libversion() + "\nSistema: " + S(QSysInfo::prettyProductName()) +
           "\nDados: " + S(QFile::decodeName(dados.c_str())) + "\nRegistro: " + registro + "\nLicença: MIT";
}

} // namespace mesa
