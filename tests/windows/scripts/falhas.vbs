' Every fault of the component as a script is told of it: one line each, in the file of the first argument.
' The text is plain so that any code page reads it. The objects of a script do not tell others what they raise, so this
' host raises nothing.
Option Explicit

Class Sessao
    Public Property Get ClienteLogado()
        ClienteLogado = "Autoridade Municipal"
    End Property
    Public Property Get SetorLogado()
        SetorLogado = ""
    End Property
End Class

Class Acesso
    Public Property Get Logado()
        Logado = False
    End Property
End Class

Class Aplicacao
    Public Title
    Public Path
    Public ProductName
End Class

Class Vazia
End Class

Dim saida
Set saida = CreateObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0), True, True)

Sub Conta(caso)
    saida.WriteLine caso & "|" & Err.Number & "|" & Err.Source & "|" & Err.Description
    Err.Clear
End Sub

Dim geral, especifica, pesquisa, consulta, nada, numero, codigo, modelo, velocidade, dia, resposta
Set geral = CreateObject("ZTAVOREQUIP.Geral")
Set nada = Nothing

On Error Resume Next
geral.Logoff
Conta "Logoff"
resposta = geral.ClickMenu("mnuModVOREquiptos")
Conta "ClickMenu"
resposta = geral.SistemaQMR
Conta "SistemaQMR"
resposta = geral.HabilitarItem("mnuModVOREquiptos")
saida.WriteLine "HabilitarItem|" & CInt(resposta)

geral.Parametros New Vazia, nada, New Vazia, New Vazia, New Vazia, New Aplicacao
Conta "Parametros"
geral.Logon New Sessao, New Acesso, "0"
Conta "Logon"
saida.WriteLine "SistemaQMR|" & geral.SistemaQMR & "|" & geral.VersaoSistemaQMR & "|" & CInt(geral.UsandoModuloQMRauxiliar)
Set especifica = geral.CEspecifica
Set pesquisa = especifica.CreateCVORPesqEquip
Set consulta = especifica.CreateCVorEquip

geral.ObtemTransacao2 "X", nada
Conta "ObtemTransacao2"
especifica.ImprimeAfericaoVigenteEquipto 1
Conta "ImprimeAfericaoVigenteEquipto"
numero = 5
codigo = "RF-01"
modelo = ""
velocidade = 60
dia = CDate(0)
resposta = pesquisa.CarregaPesqEquip(numero, codigo, modelo)
Conta "CarregaPesqEquip"
resposta = pesquisa.CarregaPesqEquip2(numero, codigo, modelo)
Conta "CarregaPesqEquip2"
resposta = pesquisa.CarregaPesqEquip3(numero, codigo, modelo, velocidade, "R", True)
Conta "CarregaPesqEquip3"
resposta = pesquisa.BuscaEquipto(numero, codigo, modelo, velocidade)
Conta "BuscaEquipto"
resposta = pesquisa.ConsultaAfericaoVigente(numero, codigo, modelo, dia, dia)
Conta "ConsultaAfericaoVigente"
saida.WriteLine "Variaveis|" & numero & "|" & codigo & "|" & modelo & "|" & velocidade

resposta = geral.NaoHa
Conta "NaoHa"
geral.Depurar = "talvez"
Conta "Depurar"
resposta = consulta.ImpCertificadoAfericaoEquipto(99999999999, "A", "x")
Conta "Estouro"
geral.Encerra
Conta "Encerra"
saida.WriteLine "FIM"
saida.Close
