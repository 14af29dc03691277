' A sibling module asks the equipment registry for an equipment and prints its certificate.
'
' Whoever runs this is a host that has the registry open: it created ZTAVOREQUIP.Geral, called Parametros, set
' ObjInterface and called Logon. To the script engine it adds one named item, Modulo, which is that object, and runs the
' script in the thread of its windows. When the script has ended, the host reads what came of it from the variable
' Relato.
' The text of this file is plain, so that any code page reads it.
Option Explicit

Dim Relato
Relato = ""

Sub Relata(nome, valor)
    Relato = Relato & nome & ": " & valor & vbCrLf
End Sub

' Lets the person choose an equipment. True if one was chosen; consulta then tells which.
Function Seleciona(consulta)
    ' What the selection starts with: a code and a type, each of which may be "", and the date of the infraction. With a
    ' date, only an equipment that has a calibration in force on that day can be chosen. The types are those of
    ' equipment that takes no pictures, as E.
    Seleciona = consulta.SelecionaEquipamento("ET-04", "E", DateSerial(2026, 3, 19))
End Function

' The seven answers about the equipment that was chosen.
Sub RelataEscolha(consulta)
    Dim verificacao
    Relata "NroIntEquip", consulta.NroIntEquip
    Relata "Codigo", consulta.Codigo
    Relata "Modelo", consulta.Modelo
    Relata "VelocPerm", consulta.VelocPerm
    Relata "NroInmetro", consulta.NroInmetro
    Relata "MarcaInmetro", consulta.MarcaInmetro
    verificacao = consulta.DtVerifInmetro
    Relata "DtVerifInmetro", Day(verificacao) & "/" & Month(verificacao) & "/" & Year(verificacao)
End Sub

' The certificate of the infraction with the keys 12 and A1, in the viewer. False if the services refused; they have
' then said why.
Sub Imprime(consulta)
    Relata "Certificado", CInt(consulta.ImpCertificadoAfericaoEquipto(12, "A1", "Fulano"))
End Sub

' A fault in here ends it and is told by the caller.
Sub Trabalha()
    Dim consulta
    Set consulta = Modulo.CEspecifica.CreateCVorEquip
    If Seleciona(consulta) Then
        RelataEscolha consulta
        Imprime consulta
    Else
        Relata "Escolha", "nenhuma"
    End If
    ' What the viewer was shown stays in the folder for temporary documents until somebody asks for this.
    consulta.LimpaArqTemp
End Sub

' The number is the registry's or the host's own, the source the way that the fault took through the module.
Sub RelataFalha(numero, fonte, descricao)
    Relata "Falha", numero
    Relata "Fonte", fonte
    Relata "Descricao", descricao
End Sub

On Error Resume Next
Trabalha
If Err.Number <> 0 Then RelataFalha Err.Number, Err.Source, Err.Description
' A script that breaks off says nothing by itself: what does not end so did not end.
Relata "FIM", "selecao"
