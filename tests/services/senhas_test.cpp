#include "services/Recusa.h"
#include "services/RegistrosAdministracao.h"
#include "services/RegrasDeSenha.h"
#include "services/Segredo.h"

#include <gtest/gtest.h>

#include <QString>

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

// Why a password of Marta Prado, who signs in as m.prado, is refused; empty when it is taken.
std::string RecusaDa(const std::string &senha)
{
    try {
        RegrasDeSenha::Confere(senha, "m.prado", "Marta Prado de Sá");
        return "";
    } catch (const Recusa &recusa) {
        return recusa.what();
    }
}

constexpr const char *Repetida = "A senha não pode ser um só caractere repetido.";
constexpr const char *Sequencia = "A senha não pode ser uma sequência do alfabeto, dos números ou do teclado.";
constexpr const char *ComNome = "A senha não pode conter o nome de usuário nem o nome da pessoa.";
constexpr const char *Comum =
    "Esta senha é feita de palavras e números que todos usam e seria adivinhada logo. Escolha outra: três ou quatro "
    "palavras que ninguém esperaria juntas são uma boa senha.";
constexpr const char *Invisivel = "A senha tem caracteres que não se veem nem se digitam.";

TEST(ServicosSenhas, Password_TooShortOrTooLong_IsToldTheLimitAndItsLength)
{
    EXPECT_EQ(RecusaDa(""), "A senha precisa ter ao menos 12 caracteres; esta tem 0.");
    EXPECT_EQ(RecusaDa("uvejtk wqzx"), "A senha precisa ter ao menos 12 caracteres; esta tem 11.");
    EXPECT_EQ(RecusaDa("uvejtk wqzxb"), "");
    EXPECT_EQ(RecusaDa("ééééééééééé"), "A senha precisa ter ao menos 12 caracteres; esta tem 11."); // not its bytes
    std::string longa;
    while (longa.size() < 128) {
        longa += "tigela de vidro moido ";
    }
    EXPECT_EQ(RecusaDa(longa.substr(0, 128)), "");
    EXPECT_EQ(RecusaDa(longa.substr(0, 129)), "A senha pode ter até 128 caracteres; esta tem 129.");
}

TEST(ServicosSenhas, Password_IsCountedAsItIsComposed)
{
    EXPECT_EQ(RecusaDa("e\u0301vejtk wqzx"), "A senha precisa ter ao menos 12 caracteres; esta tem 11.");
}

TEST(ServicosSenhas, Password_ThatCannotBeTyped_IsRefused)
{
    for (const std::string ruim : {"\n", "\t", "\x7f", "\u200b", "\u202e", "\u00ad", "\xc3"}) {
        EXPECT_EQ(RecusaDa("uvejtk wqzxb" + ruim), Invisivel) << ruim;
    }
    EXPECT_EQ(RecusaDa(std::string("uvejtk\0wqzxb", 12)), Invisivel);
}

TEST(ServicosSenhas, Password_OfOneCharacter_IsRefused)
{
    for (const std::string senha : {"aaaaaaaaaaaa", "AAAAaaaaAAAAaaaa", "............", "ééééÉÉÉÉeeee"}) {
        EXPECT_EQ(RecusaDa(senha), Repetida) << senha;
    }
}

TEST(ServicosSenhas, Password_ThatRuns_IsRefused)
{
    for (const std::string senha :
         {"abcdefghijkl", "ABCDefghIJKL", "123456789012", "098765432109", "zyxwvutsrqpo", "qwertyuiopasdfghjkl",
          "1q2w3e4r5t6y", "1qaz2wsx3edc", "aaaabbbbcccc", "abcd1234abcd", "!@#$%^&*()12345", "111122223333"}) {
        EXPECT_EQ(RecusaDa(senha), Sequencia) << senha;
    }
}

TEST(ServicosSenhas, Password_WithOnesOwnNames_IsRefused)
{
    for (const std::string senha : {"m.prado e mais coisas", "uvejtk wqzxb MARTA", "a m@rt4 das tigelas",
                                    "p-r-a-d-o vidro moido", "uvejmartapradodesa", "pr\u00e1do uvejtk wqzxb"}) {
        EXPECT_EQ(RecusaDa(senha), ComNome) << senha;
    }
    EXPECT_EQ(RecusaDa("vidro de Sá uvejtk"), ""); // "de" and "Sá" are in too many words
}

TEST(ServicosSenhas, Password_OfCommonWords_IsRefusedHoweverItIsDressedUp)
{
    for (const std::string senha : {"senha1234567",      "Senha@2026!!!",
                                    "S3nh@S3nh@S3nh@",   "password1234",
                                    "P@ssw0rd2026",      "passwordpassword",
                                    "administrador",     "Adm1n1str4d0r!",
                                    "registro2026",      "mudar123mudar",
                                    "flamengo2019!",     "FLAMENGO campeao",
                                    "Brasil#Brasil#1",   "jesus te amo 777",
                                    "deusefiel2026",     "s e n h a 1 2 3 4",
                                    "s.e.n.h.a.2.0.2.6", "séñhà forte 26",
                                    "minha senha 2026",  "qwerty123456!",
                                    "eu te amo maria",   "letmein letmein",
                                    "iloveyou 2000",     "111.222.333-44",
                                    "(51) 99876-5432",   "correct horse battery staple",
                                    "maria e jose 2",    "trustno1 trustno1",
                                    "x9x9x9x9x9x9",      "a1!a1!a1!a1!"}) {
        EXPECT_EQ(RecusaDa(senha), Comum) << senha;
    }
}

TEST(ServicosSenhas, Password_OfItsOwn_IsTaken)
{
    for (const std::string senha :
         {"tigela vidro moinho pluma", "uvejtkwqzxbo", "%~{?;<+]=[|>", "k7#Vq!x0Lw2$", "Tres pregos tortos na cerca",
          "senha de quem rema contra", "não há luar em Quaraí", "çãõêíúàâôéüñ", "8f3b91c04e7d",
          "\u043f\u0430\u0440\u043e\u0432\u043e\u0437\u0438\u043a\u043e\u0432\u0430"}) {
        EXPECT_EQ(RecusaDa(senha), "") << senha;
    }
}

TEST(ServicosSenhas, Secret_EveryCopyIsTheSameText)
{
    const Segredo um("uvejtk");
    const Segredo copia = um;
    Segredo outro = copia;
    const Segredo movido = std::move(outro);
    EXPECT_EQ(copia, um);
    EXPECT_EQ(movido.Texto(), "uvejtk");
    EXPECT_FALSE(movido.Vazio());
    EXPECT_TRUE(Segredo().Vazio());
}

// What comes before it in the memory may be given to somebody else: nothing of it is left.
TEST(ServicosSenhas, Secret_GivesItsMemoryBackWiped)
{
    alignas(std::max_align_t) std::array<char, 8> memoria = {'u', 'v', 'e', 'j', 't', 'k', 'w', 'q'};
    LimpaMemoria(memoria.data(), 6);
    EXPECT_EQ(std::string(memoria.data(), memoria.size()), std::string("\0\0\0\0\0\0wq", 8));
}

TEST(ServicosSenhas, Secret_TakesTheTextOutOfTheToolkits)
{
    QString digitado = QString::fromUtf8("vidro moído");
    const QChar *onde = digitado.constData();
    std::vector<QChar> depois(static_cast<std::size_t>(digitado.size()), QChar('x'));
    const QString guarda = digitado; // another one holds it: what is shared is not wiped under its hands
    EXPECT_EQ(Segredo::Toma(digitado).Texto(), "vidro moído");
    EXPECT_TRUE(digitado.isEmpty());
    EXPECT_EQ(guarda, QString::fromUtf8("vidro moído"));
    LimpaTexto(guarda);
    std::memcpy(depois.data(), onde, depois.size() * sizeof(QChar));
    EXPECT_EQ(depois, std::vector<QChar>(depois.size(), QChar(u'\0')));
}

TEST(ServicosSenhas, Secret_IsComposedAsItIsHashed)
{
    EXPECT_EQ(Segredo("moi\u0301do").Composto(), Segredo("moído"));
    EXPECT_EQ(Segredo("moído").Composto(), Segredo("moído"));
    EXPECT_EQ(Segredo("moido").Composto(), Segredo("moido"));
    EXPECT_EQ(Segredo().Composto(), Segredo());
}

TEST(ServicosSenhas, Record_NeverShowsTheSecretThatItCarries)
{
    UsuarioED pedido;
    pedido.Senha = "uvejtk wqzxb";
    EXPECT_EQ(pedido.Texto(), "UsuarioED{Senha=(senha)}");
    EXPECT_EQ(ComoTipo<UsuarioED>(pedido.Copia())->Senha.Valor(), Segredo("uvejtk wqzxb"));
}

} // namespace

TEST(LeSenha, Password_IsTheFirstLineWithoutItsEnd)
{
    const auto le = [](const std::string &texto) {
        std::istringstream entrada(texto);
        return std::string(LeSenha(entrada).Texto());
    };
    EXPECT_EQ(le("a senha é\n"), "a senha é");
    EXPECT_EQ(le("a senha é\r\noutra\n"), "a senha é");
    EXPECT_EQ(le(" com espaços "), " com espaços ");
    EXPECT_EQ(le(""), "");
}
