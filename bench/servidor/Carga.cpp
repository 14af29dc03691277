#include "bench/servidor/Carga.h"

#include "bench/servidor/Recheio.h"
#include "host/Data.h"
#include "rede/Versao.h"
#include "services/Resumo.h"
#include "tests/services/RegistroDeTeste.h"

#include <grpcpp/alarm.h>
#include <registro.grpc.pb.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <utility>

namespace Carga {

namespace {

namespace v1 = registro::v1;
using Relogio = std::chrono::steady_clock;

constexpr std::int32_t Pagina = 50;
constexpr std::size_t Pedaco = 1 << 20;
constexpr int DiasDaNova = 30;
constexpr int RepeteUmaEm = 20; // saves that are sent twice
constexpr std::chrono::seconds Prazo{60};
// Who is told that the server is busy asks again as a desk does: after twice as long each time.
constexpr std::chrono::milliseconds PrimeiraPausa{20};
constexpr std::chrono::milliseconds MaiorPausa{2000};

// Of a hundred operations; the rest asks which calibration was in force. Those who save store a document and change an
// equipment in turn.
constexpr int Salvas = 10;
constexpr int Listas = 20;
constexpr int Consultas = 20;

std::string NumeroDeOperacao(std::mt19937 &sorte)
{
    static constexpr char digitos[] = "0123456789abcdef";
    std::string numero = "xxxxxxxx-xxxx-4xxx-8xxx-xxxxxxxxxxxx";
    for (char &letra : numero) {
        if (letra == 'x') {
            letra = digitos[sorte() % 16];
        }
    }
    return numero;
}

// A certificate as most are: a page and, in a stream that says how long it is, a picture that nothing makes shorter.
std::string Certificado(const std::string &marca, std::size_t octetos, std::mt19937 &sorte)
{
    std::string imagem(octetos, '\0');
    std::ranges::generate(imagem, [&] { return static_cast<char>(sorte() & 0xFF); });
    std::string texto = "%PDF-1.4\n% " + marca + "\n";
    std::string tabela = "xref\n0 5\n0000000000 65535 f \n";
    int objetos = 0;
    const auto poe = [&](const std::string &objeto) {
        const std::string onde = std::to_string(texto.size());
        tabela += std::string(10 - onde.size(), '0') + onde + " 00000 n \n";
        texto += std::to_string(++objetos) + " 0 obj\n" + objeto + "\nendobj\n";
    };
    poe("<< /Type /Catalog /Pages 2 0 R >>");
    poe("<< /Type /Pages /Kids [3 0 R] /Count 1 >>");
    poe("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Resources << /XObject << /I 4 0 R >> >> >>");
    poe("<< /Type /XObject /Subtype /Image /Width " + std::to_string(octetos) +
        " /Height 1 /ColorSpace /DeviceGray /BitsPerComponent 8 /Length " + std::to_string(octetos) + " >>\nstream\n" +
        imagem + "\nendstream");
    return texto + tabela + "trailer\n<< /Size 5 /Root 1 0 R >>\nstartxref\n" + std::to_string(texto.size()) +
           "\n%%EOF\n";
}

// What all desks share.
struct Tudo {
    const Alvo &OAlvo;
    const Ritmo &ORitmo;
    Resultado OResultado = {};
    grpc::CompletionQueue Fila = {};
    bool Mede = false;
    bool Acaba = false;
    int Andando = 0; // operations under way
};

// One desk with its connection and its session: an operation at a time.
class Mesa {
  public:
    Mesa(Tudo &tudo, int qual)
        : m_Tudo(tudo),
          m_Qual(qual),
          m_Cliente(qual % Recheio::Clientes),
          m_Sorte(tudo.ORitmo.Semente * 1000U + static_cast<std::uint32_t>(qual))
    {
        grpc::SslCredentialsOptions confianca;
        confianca.pem_root_certs = tudo.OAlvo.Certificado;
        grpc::ChannelArguments argumentos;
        argumentos.SetInt(GRPC_ARG_USE_LOCAL_SUBCHANNEL_POOL, 1); // a connection of its own
        m_Canal = grpc::CreateCustomChannel(tudo.OAlvo.Endereco, grpc::SslCredentials(confianca), argumentos);
        m_Equipto = v1::EquiptoRN::NewStub(m_Canal);
        m_Documentos = v1::Documentos::NewStub(m_Canal);
        Entra();
    }
    ~Mesa()
    {
        grpc::ClientContext contexto;
        Prepara(contexto);
        v1::Vazio vazio;
        v1::Entrada::NewStub(m_Canal)->Sai(&contexto, {}, &vazio);
    }
    Mesa(const Mesa &) = delete;
    Mesa &operator=(const Mesa &) = delete;

    void Comeca()
    {
        m_Tipo = Escolhe();
        m_Operacao = NumeroDeOperacao(m_Sorte);
        m_Repeticao = false;
        if (m_Tudo.ORitmo.Antes) {
            m_Tudo.ORitmo.Antes(m_Tipo);
        }
        Faz();
    }

    // A step of the operation is done; true when the whole operation is.
    bool Segue(bool bem)
    {
        if (m_Espera) {
            m_Espera.reset();
            --m_Tudo.Andando;
            Faz();
            return false;
        }
        if (m_Tipo == Tipo::Documento && m_Passo != Passo::Fim) {
            SegueDocumento(bem);
            return false;
        }
        --m_Tudo.Andando;
        const auto codigo = m_Fim.error_code();
        if (codigo == grpc::StatusCode::RESOURCE_EXHAUSTED || codigo == grpc::StatusCode::UNAVAILABLE) {
            ++m_Tudo.OResultado.Ocupado;
            ++m_Tudo.Andando;
            m_Espera.emplace();
            m_Espera->Set(&m_Tudo.Fila, std::chrono::system_clock::now() + m_Pausa, this);
            m_Pausa = std::min(2 * m_Pausa, MaiorPausa);
            return false;
        }
        m_Pausa = PrimeiraPausa;
        if (!m_Fim.ok()) {
            m_Tudo.OResultado.Falhas.push_back(std::string(Nomes[static_cast<std::size_t>(m_Tipo)]) + ": " +
                                               std::to_string(codigo) + " " + m_Fim.error_message());
            m_Lido.Clear();
            return true;
        }
        if (m_Repeticao) {
            ++m_Tudo.OResultado.Repetidas;
            ConfereRepeticao();
            return true;
        }
        if (m_Tudo.Mede) {
            m_Tudo.OResultado.Segundos[static_cast<std::size_t>(m_Tipo)].push_back(
                std::chrono::duration<double>(Relogio::now() - m_Desde).count());
        }
        Guarda();
        const bool salva = m_Tipo == Tipo::Altera || m_Tipo == Tipo::Documento;
        if (salva && m_Sorte() % RepeteUmaEm == 0) {
            m_Repeticao = true;
            Faz();
            return false;
        }
        return true;
    }

  private:
    enum class Passo { Escreve, Termina, Fim };

    void Entra()
    {
        grpc::ClientContext contexto;
        contexto.set_deadline(std::chrono::system_clock::now() + Prazo);
        v1::PedidoDeEntrada pedido;
        pedido.set_usuario(Recheio::Usuario(m_Cliente, m_Qual / Recheio::Clientes % Recheio::UsuariosPorCliente));
        pedido.set_senha(Recheio::Senha);
        pedido.set_estacao("mesa " + std::to_string(m_Qual));
        pedido.set_contrato(rede::Contrato);
        v1::Sessao sessao;
        const grpc::Status fim = v1::Entrada::NewStub(m_Canal)->Entra(&contexto, pedido, &sessao);
        if (!fim.ok() || sessao.chave().empty()) {
            throw std::runtime_error("sign-in: " + fim.error_message() + sessao.recusa());
        }
        m_Chave = sessao.chave();
        m_NomeDoCliente = sessao.cliente();
    }

    void Prepara(grpc::ClientContext &contexto) const
    {
        contexto.set_deadline(std::chrono::system_clock::now() + Prazo);
        contexto.AddMetadata("sessao", m_Chave);
    }

    Tipo Escolhe()
    {
        if (m_Tudo.ORitmo.SoPerguntas) {
            return Tipo::Vigente;
        }
        const int sorte = static_cast<int>(m_Sorte() % 100);
        if (sorte < Salvas) {
            return m_Lido.nrointequip() == 0 || m_Documento == 0 ? Tipo::Documento : Tipo::Altera;
        }
        return sorte < Salvas + Listas               ? Tipo::Lista
               : sorte < Salvas + Listas + Consultas ? Tipo::Consulta
                                                     : Tipo::Vigente;
    }

    // One of the client's equipment; what a desk changes is nobody else's.
    std::int32_t Qualquer() { return Do(m_Sorte()); }
    std::int32_t Meu()
    {
        const auto mesas =
            static_cast<std::uint32_t>((m_Tudo.ORitmo.Mesas + Recheio::Clientes - 1) / Recheio::Clientes);
        const auto meus = std::max(1U, DoCliente() / mesas);
        return Do(static_cast<std::uint32_t>(m_Sorte()) % meus * mesas +
                  static_cast<std::uint32_t>(m_Qual / Recheio::Clientes));
    }
    std::uint32_t DoCliente() const
    {
        return static_cast<std::uint32_t>(m_Tudo.OAlvo.Equipamentos / Recheio::Clientes);
    }
    std::int32_t Do(std::size_t posicao) const
    {
        return static_cast<std::int32_t>(posicao % DoCliente()) * Recheio::Clientes + m_Cliente + 1;
    }

    void Faz()
    {
        ++m_Tudo.Andando;
        if (!m_Repeticao) {
            m_Desde = Relogio::now();
        }
        // These live in the memory of the call, which the context ends.
        m_LeLista.reset();
        m_LeEquipto.reset();
        m_LeAfericao.reset();
        m_Escritor.reset();
        m_Contexto = std::make_unique<grpc::ClientContext>();
        Prepara(*m_Contexto);
        switch (m_Tipo) {
        case Tipo::Lista:
            return FazLista();
        case Tipo::Consulta:
            return FazConsulta();
        case Tipo::Vigente:
            return FazVigente();
        case Tipo::Altera:
            return FazAltera();
        case Tipo::Documento:
            return FazDocumento();
        }
    }

    void FazLista()
    {
        v1::ListaEquiptoED pedido;
        pedido.set_clienteinc(m_NomeDoCliente);
        pedido.set_ativo(1);
        pedido.set_indtrabfoto(1);
        pedido.set_proxnrointequip(m_Sorte() % 2 == 0 ? 0 : Qualquer());
        m_LeLista = m_Equipto->Asynclista2(m_Contexto.get(), pedido, &m_Tudo.Fila);
        m_LeLista->Finish(&m_Lista, &m_Fim, this);
    }
    void FazConsulta()
    {
        v1::EquiptoED pedido;
        m_DoMeu = m_Sorte() % 2 == 0;
        pedido.set_nrointequip(m_DoMeu ? Meu() : Qualquer());
        m_LeEquipto = m_Equipto->Asyncconsulta(m_Contexto.get(), pedido, &m_Tudo.Fila);
        m_LeEquipto->Finish(&m_Resposta, &m_Fim, this);
    }
    void FazVigente()
    {
        v1::ConsultaAfericaoED pedido;
        pedido.set_nrointequip(Qualquer());
        pedido.set_dtinfracao(DataDe(10, 1, 2024).Valor + static_cast<double>(m_Sorte() % 1000));
        pedido.set_tipoconsulta(1);
        m_LeAfericao = m_Equipto->AsyncconsultaSimplesAfericaoVigente(m_Contexto.get(), pedido, &m_Tudo.Fila);
        m_LeAfericao->Finish(&m_Afericao, &m_Fim, this);
    }
    void FazAltera()
    {
        if (!m_Repeticao) {
            m_Mudanca.Clear();
            m_Mudanca.set_nrointequip(m_Lido.nrointequip());
            m_Mudanca.set_versaolida(m_Lido.versaolida());
            const v1::SensorED &lido = m_Lido.sensores().itens(0);
            v1::SensorED &sensor = *m_Mudanca.mutable_sensores()->add_itens();
            sensor.set_nrointsensor(lido.nrointsensor());
            // Before the others: a calibration of a day to come is refused.
            double primeiro = lido.afericoes().itens(0).dataverificacao();
            for (const v1::AfericaoED &afericao : lido.afericoes().itens()) {
                primeiro = std::min(primeiro, afericao.dataverificacao());
            }
            v1::AfericaoED &nova = *sensor.mutable_afericoes()->add_itens();
            nova.set_nrointafericao(0);
            nova.set_numero(std::to_string(m_Qual) + "-" + std::to_string(++m_Novas));
            nova.set_marca("987");
            nova.set_dataverificacao(std::floor(primeiro) - DiasDaNova);
            nova.set_datavencimento(std::floor(primeiro) - 1);
            nova.set_ativo(1);
            nova.set_nrointimgcertif(static_cast<double>(m_Documento));
            nova.set_tipoafer(1);
            nova.set_portdimel("");
        }
        m_Contexto->AddMetadata("operacao", m_Operacao);
        m_LeEquipto = m_Equipto->Asyncaltera(m_Contexto.get(), m_Mudanca, &m_Tudo.Fila);
        m_LeEquipto->Finish(&m_Resposta, &m_Fim, this);
    }
    void FazDocumento()
    {
        if (!m_Repeticao) {
            m_Pdf = Certificado(m_Operacao, m_Tudo.OAlvo.TamanhoDoDocumento, m_Sorte);
            m_Soma = mesa::Resumo(QByteArray::fromStdString(m_Pdf));
        }
        m_Contexto->AddMetadata("operacao", m_Operacao);
        m_Enviado = 0;
        m_Passo = Passo::Escreve;
        m_Escritor = m_Documentos->AsyncGuarda(m_Contexto.get(), &m_Numero, &m_Tudo.Fila, this);
    }
    void SegueDocumento(bool bem)
    {
        // What went wrong on the way is told at the end.
        if (bem && m_Passo == Passo::Escreve && m_Enviado < m_Pdf.size()) {
            v1::PedacoDeDocumento pedaco;
            if (m_Enviado == 0) {
                pedaco.set_tamanho(static_cast<std::int64_t>(m_Pdf.size()));
                pedaco.set_sha256(m_Soma);
            }
            pedaco.set_octetos(m_Pdf.substr(m_Enviado, Pedaco));
            m_Enviado += Pedaco;
            m_Escritor->Write(pedaco, this);
        } else if (bem && m_Passo == Passo::Escreve) {
            m_Passo = Passo::Termina;
            m_Escritor->WritesDone(this);
        } else {
            m_Passo = Passo::Fim;
            m_Escritor->Finish(&m_Fim, this);
        }
    }

    // What an operation that was done leaves.
    void Guarda()
    {
        switch (m_Tipo) {
        case Tipo::Lista:
            if (m_Lista.equipamentos().itens_size() == 0 && m_Lista.proxnrointequip() > 0) {
                Falhou("a page has nothing on it");
            }
            break;
        case Tipo::Consulta:
            if (m_Resposta.sensores().itens_size() != 1) {
                Falhou("an equipment came without its sensor");
            } else if (m_DoMeu) {
                m_Lido = m_Resposta;
            }
            break;
        case Tipo::Vigente:
            if (m_Afericao.nrointafericao() == 0) {
                Falhou("no calibration is in force on a day on which one is");
            }
            break;
        case Tipo::Altera: {
            const v1::AfericaoED &nova = m_Mudanca.sensores().itens(0).afericoes().itens(0);
            m_Tudo.OResultado.Salvos.push_back({m_Mudanca.nrointequip(), nova.numero(), m_Documento});
            *m_Lido.mutable_sensores()->mutable_itens(0)->mutable_afericoes()->add_itens() = nova;
            m_Lido.set_versaolida(m_Resposta.versaolida());
            m_VersaoSalva = m_Resposta.versaolida();
            m_Documento = 0; // which is of one equipment only
            break;
        }
        case Tipo::Documento:
            m_Documento = static_cast<std::int64_t>(m_Numero.numero());
            m_Tudo.OResultado.Salvos.push_back({0, m_Soma, m_Documento});
            break;
        }
    }
    void ConfereRepeticao()
    {
        if (m_Tipo == Tipo::Altera ? m_Resposta.versaolida() != m_VersaoSalva
                                   : static_cast<std::int64_t>(m_Numero.numero()) != m_Documento) {
            Falhou("a repeated save was answered otherwise than the first time");
        }
    }
    void Falhou(const char *oQue)
    {
        m_Tudo.OResultado.Falhas.push_back(std::string(Nomes[static_cast<std::size_t>(m_Tipo)]) + ": " + oQue);
    }

    Tudo &m_Tudo;
    int m_Qual;
    int m_Cliente;
    std::mt19937 m_Sorte;
    std::shared_ptr<grpc::Channel> m_Canal;
    std::unique_ptr<v1::EquiptoRN::Stub> m_Equipto;
    std::unique_ptr<v1::Documentos::Stub> m_Documentos;
    std::string m_Chave;
    std::string m_NomeDoCliente;

    // The operation under way.
    Tipo m_Tipo = Tipo::Vigente;
    std::string m_Operacao;
    bool m_Repeticao = false;
    bool m_DoMeu = false;
    Relogio::time_point m_Desde;
    std::optional<grpc::Alarm> m_Espera;
    std::chrono::milliseconds m_Pausa = PrimeiraPausa;
    std::unique_ptr<grpc::ClientContext> m_Contexto;
    grpc::Status m_Fim;
    std::unique_ptr<grpc::ClientAsyncResponseReader<v1::ListaEquiptoED>> m_LeLista;
    std::unique_ptr<grpc::ClientAsyncResponseReader<v1::EquiptoED>> m_LeEquipto;
    std::unique_ptr<grpc::ClientAsyncResponseReader<v1::AfericaoED>> m_LeAfericao;
    std::unique_ptr<grpc::ClientAsyncWriter<v1::PedacoDeDocumento>> m_Escritor;
    v1::ListaEquiptoED m_Lista;
    v1::EquiptoED m_Resposta;
    v1::AfericaoED m_Afericao;
    v1::NumeroDeDocumento m_Numero;
    v1::EquiptoED m_Mudanca;
    std::string m_Pdf;
    std::string m_Soma;
    std::size_t m_Enviado = 0;
    Passo m_Passo = Passo::Escreve;

    // What it knows.
    v1::EquiptoED m_Lido; // one of its own, as it stands in the registry
    std::int64_t m_VersaoSalva = 0;
    std::int64_t m_Documento = 0;
    int m_Novas = 0;
};

// One operation after the other, one desk after the other.
void UmaPorUma(Tudo &tudo, std::vector<std::unique_ptr<Mesa>> &mesas)
{
    tudo.Mede = true;
    for (std::size_t operacao = 0; operacao < tudo.ORitmo.UmaPorUma; ++operacao) {
        mesas[operacao % mesas.size()]->Comeca();
        void *quem = nullptr;
        bool bem = false;
        while (tudo.Fila.Next(&quem, &bem) && !static_cast<Mesa *>(quem)->Segue(bem)) {
        }
    }
}

void Juntas(Tudo &tudo, std::vector<std::unique_ptr<Mesa>> &mesas)
{
    const auto chama = [](const std::function<void()> &oQue) {
        if (oQue) {
            oQue();
        }
    };
    const auto comeco = Relogio::now() + tudo.ORitmo.Aquece;
    const auto fim = comeco + tudo.ORitmo.Mede;
    auto segundo = comeco + std::chrono::seconds(1);
    Relogio::time_point mediu;
    for (const auto &mesa : mesas) {
        mesa->Comeca();
    }
    while (tudo.Andando > 0) {
        void *quem = nullptr;
        bool bem = false;
        tudo.Fila.Next(&quem, &bem);
        const bool acabou = static_cast<Mesa *>(quem)->Segue(bem);
        const auto agora = Relogio::now();
        if (!tudo.Mede && !tudo.Acaba && agora >= comeco) {
            tudo.Mede = true;
            mediu = agora;
            chama(tudo.ORitmo.NoComeco);
        }
        if (tudo.Mede && agora >= segundo) {
            segundo += std::chrono::seconds(1);
            chama(tudo.ORitmo.CadaSegundo);
        }
        if (tudo.Mede && agora >= fim) {
            tudo.Mede = false;
            tudo.Acaba = true;
            tudo.OResultado.Tempo = std::chrono::duration<double>(agora - mediu).count();
            chama(tudo.ORitmo.NoFim);
        }
        if (acabou && !tudo.Acaba) {
            static_cast<Mesa *>(quem)->Comeca();
        }
    }
}

} // namespace

std::size_t Resultado::Operacoes() const
{
    std::size_t soma = 0;
    for (const auto &deUmTipo : Segundos) {
        soma += deUmTipo.size();
    }
    return soma;
}

Resultado Trabalha(const Alvo &alvo, const Ritmo &ritmo)
{
    Tudo tudo{.OAlvo = alvo, .ORitmo = ritmo};
    {
        std::vector<std::unique_ptr<Mesa>> mesas;
        for (int qual = 0; qual < ritmo.Mesas; ++qual) {
            mesas.push_back(std::make_unique<Mesa>(tudo, qual));
        }
        if (ritmo.UmaPorUma > 0) {
            UmaPorUma(tudo, mesas);
        } else {
            Juntas(tudo, mesas);
        }
    }
    return std::move(tudo.OResultado);
}

} // namespace Carga
