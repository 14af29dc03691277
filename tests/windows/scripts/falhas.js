// Every fault of the component as a script is told of it: one line each, in the file of the first argument.
// The text is plain so that any code page reads it. The source of a fault is not told in this language, and its objects
// do not tell the number of what they raise, so this host raises nothing.
var saida = new ActiveXObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0), true, true);

function Tenta(caso, trabalho) {
    try {
        trabalho();
        saida.WriteLine(caso + "|0|");
    } catch (e) {
        var numero = e.number;
        if ((numero & 0xFFFF0000) == (0x800A0000 | 0)) {
            numero = numero & 0xFFFF;
        }
        saida.WriteLine(caso + "|" + numero + "|" + e.description);
    }
}

var sessao = {
    ClienteLogado: "Autoridade Municipal",
    SetorLogado: ""
};
var acesso = { Logado: false };
var aplicacao = { Title: "", Path: "", ProductName: "" };

var geral = new ActiveXObject("ZTAVOREQUIP.Geral");
Tenta("Logoff", function () { geral.Logoff(); });
Tenta("ClickMenu", function () { geral.ClickMenu("mnuModVOREquiptos"); });
Tenta("SistemaQMR", function () { var s = geral.SistemaQMR; });
saida.WriteLine("HabilitarItem|" + (geral.HabilitarItem("mnuModVOREquiptos") ? -1 : 0));

Tenta("Parametros", function () { geral.Parametros({}, null, {}, {}, {}, aplicacao); });
Tenta("Logon", function () { geral.Logon(sessao, acesso, "0"); });
saida.WriteLine("SistemaQMR|" + geral.SistemaQMR + "|" + geral.VersaoSistemaQMR + "|" +
                (geral.UsandoModuloQMRauxiliar ? -1 : 0));
var especifica = geral.CEspecifica;
var pesquisa = especifica.CreateCVORPesqEquip();
var consulta = especifica.CreateCVorEquip();

Tenta("ObtemTransacao2", function () { geral.ObtemTransacao2("X", null); });
Tenta("ImprimeAfericaoVigenteEquipto", function () { especifica.ImprimeAfericaoVigenteEquipto(1); });
var numero = 5, codigo = "RF-01", modelo = "", velocidade = 60, dia = 46032;
Tenta("CarregaPesqEquip", function () { pesquisa.CarregaPesqEquip(numero, codigo, modelo); });
Tenta("CarregaPesqEquip2", function () { pesquisa.CarregaPesqEquip2(numero, codigo, modelo); });
Tenta("CarregaPesqEquip3", function () {
    pesquisa.CarregaPesqEquip3(numero, codigo, modelo, velocidade, "R", true);
});
Tenta("BuscaEquipto", function () { pesquisa.BuscaEquipto(numero, codigo, modelo, velocidade); });
Tenta("ConsultaAfericaoVigente", function () {
    pesquisa.ConsultaAfericaoVigente(numero, codigo, modelo, dia, dia);
});
saida.WriteLine("Variaveis|" + numero + "|" + codigo + "|" + modelo + "|" + velocidade);

Tenta("NaoHa", function () { var n = geral.NaoHa(); });
Tenta("Depurar", function () { geral.Depurar = "talvez"; });
Tenta("Estouro", function () { consulta.ImpCertificadoAfericaoEquipto(99999999999, "A", "x"); });
Tenta("Encerra", function () { geral.Encerra(); });
saida.WriteLine("FIM");
saida.Close();
