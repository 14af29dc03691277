' A sibling module's use of the component, from a script: lets the person pick an equipment and prints a certificate.
' What the host gives is here the least that the component asks for. The classes of the host's system library (message,
' domain data, directories, application-global object, viewer) have to be registered; see the table of classes.
' The outcome goes to the file of the first argument.
Option Explicit

Class Interface_
    ' Shows a form of the component. The host may put it into a window of its own.
    Public Sub MostraJanela(form, modal, dono, depurar, formClick)
        form.Show modal
    End Sub
End Class

Class Aplicacao
    Public Property Get Title()
        Title = "Consulta"
    End Property
    Public Property Get Path()
        Path = "."
    End Property
    Public Property Get ProductName()
        ProductName = "Consulta"
    End Property
End Class

Class Vazia
End Class

Dim saida, sessao, geral, consulta, achou
Set saida = CreateObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0), True, True)
Set sessao = CreateObject("Fiscaliza.Sessao") ' the host's: session, access control, local database

Set geral = CreateObject("ZTAVOREQUIP.Geral")
geral.Parametros New Vazia, Nothing, New Vazia, New Vazia, sessao.Banco, New Aplicacao
Set geral.ObjInterface = New Interface_ ' only after Parametros, which clears it
geral.Logon sessao.objMTM, sessao.objSCA, ""

Set consulta = geral.CEspecifica.CreateCVorEquip
achou = consulta.SelecionaEquipamento("", "", CDate(46100))
If achou Then
    saida.WriteLine consulta.Codigo & " " & consulta.NroInmetro
    If consulta.ImpCertificadoAfericaoEquipto(12, "A1", "Fulano") Then
        saida.WriteLine "certificado"
    End If
    consulta.LimpaArqTemp
End If

Set consulta = Nothing
geral.Logoff
geral.Encerra
saida.WriteLine "FIM"
saida.Close
