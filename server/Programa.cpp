#include "server/Programa.h"

#include "host/Falha.h"
#include "server/Certificado.h"
#include "server/Enderecos.h"
#include "server/Servidor.h"
#include "services/Banco.h"
#include "services/Cabeca.h"
#include "services/ComandosDeCopia.h"
#include "services/Conferidor.h"
#include "services/DialetoPostgres.h"
#include "services/Disco.h"
#include "services/Esquema.h"
#include "services/LeitorSQLite.h"
#include "services/Segredo.h"
#include "services/Servicos.h"
#include "services/sample/Amostra.h"

#include <istream>
#include <ostream>

namespace servidor {

namespace {

void Diz(std::ostream &onde, const std::vector<std::string> &frases)
{
    for (const std::string &frase : frases) {
        onde << frase << '\n';
    }
    onde.flush();
}

// What there is to say of settings: what is wrong, and what deserves a look.
struct Exame {
    std::vector<std::string> Erros;
    std::vector<std::string> Avisos;
};

// A registry in a database, only looked at: to open it for work would bring its schema up to date, and wait for those
// who write.
void ExaminaBanco(const Configuracao &configuracao, Exame &exame)
{
    std::string onde = configuracao.Registro;
    if (onde.find("target_session_attrs=") == std::string::npos) { // the machine that the server would work on
        onde += (onde.find('?') == std::string::npos ? "?" : "&") + std::string("target_session_attrs=read-write");
    }
    mesa::Banco banco(std::make_unique<mesa::DialetoPostgres>(), onde, mesa::Banco::SoConsulta{});
    banco.Le([&] {
        mesa::Consulta registro(banco,
                                "SELECT current_user, rolsuper OR pg_has_role(current_user, relowner, 'MEMBER'), "
                                "current_setting('synchronous_standby_names') FROM pg_roles, pg_class "
                                "WHERE rolname = current_user AND pg_class.oid = CAST('public.registro' AS "
                                "regclass)");
        registro.Proxima();
        if (registro.Valor(1).toBool()) {
            exame.Avisos.push_back("O papel " + registro.Texto(0) +
                                   " é o do dono do registro, ou administra o banco: para atender, use um que só leia, "
                                   "inclua e altere.");
        }
        if (registro.Texto(2).empty()) {
            exame.Avisos.emplace_back("O banco não espera por outra máquina (synchronous_standby_names está vazio): o "
                                      "que se grava está num disco só.");
        }
    });
}

// The version of a registry in a file; this program's own where it cannot be told, which whoever reads on finds out.
std::int64_t VersaoDoArquivo(const std::string &registro)
try {
    const std::int64_t versao =
        mesa::LeitorSQLite(registro, false).Unico("SELECT MAX(Versao) FROM ESQUEMA").toLongLong();
    return versao == 0 ? mesa::Esquema::Versao : versao;
} catch (const mesa::ErroDeLeitura &) {
    return mesa::Esquema::Versao;
}

void ExaminaArquivo(const Configuracao &configuracao, const mesa::Relogio &agora, Exame &exame)
{
    const std::int64_t versao = VersaoDoArquivo(configuracao.Registro);
    if (versao > mesa::Esquema::Versao) {
        exame.Erros.push_back("O registro é da versão " + std::to_string(versao) +
                              ", mais nova que a deste programa. Atualize o programa.");
        return;
    }
    if (versao < mesa::Esquema::Versao) {
        exame.Avisos.push_back("O registro é da versão " + std::to_string(versao) +
                               ", de um programa anterior: será copiado e atualizado quando o servidor começar, ou já, "
                               "com --atualiza.");
        return;
    }
    mesa::ExportacaoDeCabeca::Le(configuracao.Registro, agora());
    if (!mesa::PodeGravar(configuracao.Registro)) {
        exame.Avisos.push_back("Este usuário do sistema não pode gravar em " + configuracao.Registro +
                               ": o registro seria só de consulta.");
    }
}

// What the settings name, looked at and left as it is.
Exame Experimenta(const Configuracao &configuracao, const mesa::Relogio &agora)
{
    Exame exame;
    const auto tenta = [&](const auto &oQue) {
        try {
            oQue();
        } catch (...) {
            exame.Erros.push_back(FalhaCorrente().Descricao);
        }
    };
    if (LugarDeEscuta::Le(configuracao.Escuta)->Porta == 0) {
        exame.Erros.emplace_back("\"escuta\" tem a porta 0, que a cada começo seria outra: escolha uma.");
    }
    tenta([&] {
        if (configuracao.NoBanco()) {
            ExaminaBanco(configuracao, exame);
        } else {
            ExaminaArquivo(configuracao, agora, exame);
        }
    });
    if (!configuracao.SemTls) {
        tenta([&] {
            const auto par = configuracao.Certificado.empty()
                                 ? ParDeChaves::ConferePasta(configuracao.PastaDoCertificado)
                                 : ParDeChaves::DosArquivos(configuracao.Certificado, configuracao.Chave);
            if (const std::string aviso = par ? par->AvisoDeVencimento() : ""; !aviso.empty()) {
                exame.Avisos.push_back(aviso);
            }
        });
    }
    return exame;
}

int ConfereConfiguracao(const Configuracao &configuracao, const Boca &boca, const mesa::Relogio &agora)
{
    Exame exame{configuracao.Confere(), {}};
    if (exame.Erros.empty()) {
        exame = Experimenta(configuracao, agora);
    }
    Diz(boca.Saida, exame.Erros.empty() ? std::vector<std::string>{"A configuração está em ordem."} : exame.Erros);
    for (const std::string &aviso : exame.Avisos) {
        boca.Saida << "Aviso: " << aviso << std::endl;
    }
    return exame.Erros.empty() ? 0 : 1;
}

// A new registry, or one that was left without anybody in it when it was made.
Ref<mesa::Servicos> Cria(const Configuracao &configuracao, mesa::TipoDeRegistro tipo, const mesa::Relogio &agora,
                         const mesa::CustoDaSenha &custo)
{
    try {
        return mesa::Servicos::Cria(configuracao.Registro, tipo, agora, custo);
    } catch (const Falha &falha) {
        if (falha.Numero != NumeroFalha::ArquivoJaExiste) {
            throw;
        }
        Ref<mesa::Servicos> aberto = mesa::Servicos::Abre(configuracao.Registro, agora, custo);
        if (!aberto->Vazio() || aberto->Tipo() != tipo) {
            throw Falha(NumeroFalha::ArquivoJaExiste, "Servidor",
                        "Já há um registro no lugar que \"registro\" nomeia. Nada foi criado.");
        }
        return aberto;
    }
}

int CriaNovo(const LinhaDeComando &linha, const Configuracao &configuracao, const Boca &boca,
             const mesa::Relogio &agora, const mesa::CustoDaSenha &custo)
{
    const mesa::Segredo senha = mesa::LeSenha(boca.Entrada);
    if (senha.Vazio()) {
        boca.Erros << "A senha do administrador é lida da entrada padrão, e não veio.\n";
        return 1;
    }
    std::string recusa;
    if (!Cria(configuracao, mesa::TipoDeRegistro::Registro, agora, custo)
             ->PrimeiroAdministrador(linha.Cliente, linha.Administrador, senha, recusa)) {
        boca.Erros << recusa << '\n';
        return 1;
    }
    boca.Saida << "O registro foi criado.\n";
    return 0;
}

int Serve(const Configuracao &configuracao, const Boca &boca, const mesa::Relogio &agora,
          const std::function<void()> &espera, const mesa::CustoDaSenha &custo)
{
    Servidor servidor(configuracao, agora, custo);
    boca.Erros << "O servidor do registro atende em " << configuracao.Escuta << " (porta " << servidor.Porta() << ").\n"
               << (servidor.Digital().empty() ? "Sem TLS: só esta máquina o alcança."
                                              : "Impressão digital do certificado: " + servidor.Digital())
               << std::endl;
    espera();
    boca.Erros << "O servidor está terminando o que está em andamento." << std::endl;
    servidor.Termina(configuracao.PrazoDoFim);
    return 0;
}

int Atende(const LinhaDeComando &linha, const Configuracao &configuracao, const Boca &boca, const mesa::Relogio &agora,
           const std::function<void()> &espera, const mesa::CustoDaSenha &custo)
{
    using Ato = LinhaDeComando::Ato;
    switch (linha.OQue) {
    case Ato::ConfereConfiguracao:
        return ConfereConfiguracao(configuracao, boca, agora);
    case Ato::Atualiza:
        mesa::Servicos::Abre(configuracao.Registro, agora, custo); // which is what brings it up to date
        boca.Saida << "O registro está na versão " << mesa::Esquema::Versao << ", que é a deste programa.\n";
        return 0;
    case Ato::Novo:
        return CriaNovo(linha, configuracao, boca, agora, custo);
    case Ato::Amostra: {
        const Ref<mesa::Servicos> servicos = Cria(configuracao, mesa::TipoDeRegistro::Amostra, agora, custo);
        mesa::CadastraUsuariosDaAmostra(*servicos);
        mesa::PreencheAmostra(*servicos, agora().Local, [](double) {});
        boca.Saida << "A amostra foi criada.\n";
        return 0;
    }
    case Ato::Confere: {
        const auto saida = mesa::ComandoDeConferencia::Confere(configuracao.Registro, linha.Desde, agora());
        boca.Saida << saida.Texto;
        return saida.Codigo;
    }
    case Ato::Copia:
    case Ato::Restaura: {
        const mesa::DesfechoDeComando desfecho =
            linha.OQue == Ato::Copia
                ? mesa::ComandaCopia(configuracao.Registro, mesa::Conferidor::Achados, linha.Pasta, agora())
                : mesa::ComandaRestauracao(configuracao.Registro, mesa::Conferidor::Achados,
                                           {linha.Arquivo, "", linha.DeOutro}, agora());
        (desfecho.Saida == 0 ? boca.Saida : boca.Erros) << desfecho.Texto;
        return desfecho.Saida;
    }
    default:
        return Serve(configuracao, boca, agora, espera, custo);
    }
}

} // namespace

int Programa(const LinhaDeComando &linha, const Boca &boca, const mesa::Relogio &agora,
             const std::function<void()> &espera, const mesa::CustoDaSenha &custo)
{
    if (!linha.Erro.empty()) {
        boca.Erros << linha.Erro << "\n\n" << LinhaDeComando::Ajuda();
        return 2;
    }
    if (linha.OQue == LinhaDeComando::Ato::Ajuda) {
        boca.Saida << LinhaDeComando::Ajuda();
        return 0;
    }
    if (linha.OQue == LinhaDeComando::Ato::Versao) {
        boca.Saida << "registro-servidor " VERSAO_DO_PROGRAMA "\n";
        return 0;
    }
    try {
        std::vector<std::string> erros;
        const Configuracao configuracao = Configuracao::Le(linha.Configuracao, erros);
        if (!erros.empty()) {
            const bool confere = linha.OQue == LinhaDeComando::Ato::ConfereConfiguracao;
            Diz(confere ? boca.Saida : boca.Erros, erros);
            return 1;
        }
        return Atende(linha, configuracao, boca, agora, espera, custo);
    } catch (...) {
        boca.Erros << FalhaCorrente().Descricao << std::endl;
        return 1;
    }
}

} // namespace servidor
