#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

namespace exemplo {

// What a host has for the registry. All are objects of its own, with the members that the registry asks for by name;
// everything up to MDB may be null.
struct ObjetosDoHospedeiro {
    IDispatch *FormMDI = nullptr;
    IDispatch *MenuDestino = nullptr;
    IDispatch *Relatorios = nullptr;
    IDispatch *Ajuda = nullptr;
    IDispatch *MDB = nullptr;
    IDispatch *oAppEXE = nullptr;
    IDispatch *cGlobal = nullptr;
    IDispatch *ObjInterface = nullptr;
    IDispatch *objMTM = nullptr;
    IDispatch *objSCA = nullptr;
    std::wstring sMunicCreden;
};

// Opens the registry, lets the person choose an equipment, prints a certificate and closes the registry. Answers what
// came of it, in lines. In the thread of the host's windows, for which OleInitialize was called.
std::wstring Seleciona(const ObjetosDoHospedeiro &hospedeiro);

} // namespace exemplo
