// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Any bytes may claim to be an elaborated design. What is read from them has to be a netlist in
// which every net is found by its name.

#include "documentmutator.h"
#include "netlist/verilatorxml.h"
#include "netlistfuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Standin::XmlReadOptions options;
    options.blackBoxFiles.append(QStringLiteral("stubs.v"));
    options.vhdlFiles.append(QStringLiteral("vhdl.v"));
    Standin::ModuleTable table;
    QString error;
    if (Standin::readVerilatorXml(fileWith(data, size), options, &table, &error))
        checkElaboration(std::move(table));
    else if (error.isEmpty())
        std::abort();
    return 0;
}

static QStringList names()
{
    return QString(
               "verilator_xml files file module_files cells cell netlist module iface primitive "
               "package var varref varxref const sel arraysel structsel concat extend contassign "
               "assign assigndly assignalias assignforce begin while port instance range senitem "
               "bufif1 pull eq neqcase taskref funcref arg always alwayspublic initial final "
               "func task typetable basicdtype refdtype enumdtype constdtype structdtype "
               "uniondtype packarraydtype unpackarraydtype memberdtype voiddtype typedef modport "
               "class enumitem and cond id filename loc name origName topModule dtype_id "
               "sub_dtype_id dir direction pinIndex portIndex vartype param localparam defName "
               "dotted edgeType left right width widthminv")
        .split(QLatin1Char(' '));
}

static QStringList values()
{
    const QStringList words =
        QString(
            ",0,1,2,3,-1,31,32,255,65536,2147483647,2147483648,-2147483648,4294967296,64000001,"
            "1'h0,1'bz,32'sh3,8'hzz,'h,99999999999'h1,input,output,inout,ref,const ref,logic,"
            "wire,integer,genvar,ifaceref,real,LOGIC_IMPLICIT,POS,NEG,BOTH,EDGE,ANY,top,a,b,a.b,"
            "u0__DOT__q,dotted__02ename__05b0__05d,x__0,__05b,OD_JTAG,IOBUF,stubs.v,vhdl.v,"
            "<&>\"',a\tb")
            .split(QLatin1Char(','));
    return words + QStringList{QString(300, QLatin1Char('n')), QString::fromUtf8("\xC3\xA4")};
}

static const DocumentVocabulary &vocabulary()
{
    static const DocumentVocabulary words = {names(), values()};
    return words;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size,
                                               std::size_t most, unsigned seed)
{
    return mutateDocument(data, size, most, seed, vocabulary());
}
