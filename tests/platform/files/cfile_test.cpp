#include "platform/files/cstdio_file.h"

#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include "platform/files/system_files.h"
#include "tests/platform/files/file_modes.h"
#include "tests/support/files.h"

using namespace std::string_view_literals;

namespace {

using Textos = std::vector<std::string>;

constexpr std::size_t kBufer = std::size_t{64} * 1024;

/// The lines without their ends.
Textos Lineas(const CString& nombre)
{
    CStdioFile fichero;
    EXPECT_TRUE(fichero.Open(nombre, kLee));
    Textos lineas;
    for (CString linea; fichero.ReadString(linea);)
        lineas.emplace_back(std::string_view(linea));
    return lineas;
}

/// The pieces of up to `n` - 1 characters, line ends among them.
Textos Trozos(const CString& nombre, UINT n)
{
    CStdioFile fichero;
    EXPECT_TRUE(fichero.Open(nombre, kLee));
    Textos trozos;
    for (std::vector<char> bufer(n); fichero.ReadString(bufer.data(), n) != nullptr;)
        trozos.emplace_back(bufer.data());
    return trozos;
}

std::string Une(const Textos& textos, const char* tras)
{
    std::string todo;
    for (const std::string& texto : textos)
        todo += texto + tras;
    return todo;
}

} // namespace

TEST(CStdioFile, ReadsLinesAsTheyComeInTheWorld)
{
    const CCarpetaPrueba carpeta;
    const struct {
        const char* motivo;
        std::string_view bytes;
        Textos lineas;
        bool cierra = true; ///< the last line has its end
    } casos[] = {
        {"LF", "a\nbc\n", {"a", "bc"}},
        {"CR LF", "a\r\nbc\r\n", {"a", "bc"}},
        {"a last line without an end", "a\r\nbc", {"a", "bc"}, false},
        {"empty lines", "\n\r\n\n", {"", "", ""}},
        {"a lone CR is data", "a\rb\n", {"a\rb"}},
        {"CR CR LF: one of them belongs to the line end", "a\r\r\nb\n", {"a\r", "b"}},
        {"a CR at the end of the file is data", "a\r", {"a\r"}, false},
        {"and nothing else than that", "\r", {"\r"}, false},
        {"a NUL reads as a blank", "\0a\0\0b\0\r\n"sv, {" a  b "}},
        {"the old end mark behind a line end", "a\r\n\x1A", {"a"}},
        {"the old end mark behind a character", "a\x1A", {"a"}, false},
        {"behind a CR, which stays data", "a\r\x1A", {"a\r"}, false},
        {"nothing but the end mark", "\x1A", {}},
        {"of two the last one", "\x1A\x1A", {"\x1A"}, false},
        {"0x1A inside is data",
         "a\x1A"
         "b\n",
         {"a\x1A"
          "b"}},
        {"0x1A in front of the last line end is data", "a\x1A\r\n", {"a\x1A"}},
        {"empty file", "", {}},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const CString nombre = carpeta.Pon("entrada.txt", caso.bytes);
        EXPECT_EQ(Lineas(nombre), caso.lineas);
        std::string todo = Une(caso.lineas, "\n");
        if (!caso.cierra)
            todo.pop_back();
        for (UINT n = 2; n < 10; ++n) {
            const Textos trozos = Trozos(nombre, n);
            EXPECT_EQ(Une(trozos, ""), todo) << n;
            for (const std::string& trozo : trozos) {
                EXPECT_LT(trozo.size(), n);
                EXPECT_GE(trozo.find('\n'), trozo.size() - 1) << "a piece goes past its line";
            }
        }
    }
}

TEST(CStdioFile, ALineThatFillsTheBufferLeavesItsEndForTheNextCall)
{
    const CCarpetaPrueba carpeta;
    const struct {
        const char* motivo;
        const char* bytes;
        Textos trozos; ///< of up to four characters
    } casos[] = {
        {"room for the end: LF", "abc\nx", {"abc\n", "x"}},
        {"room for the end: CR LF", "abc\r\nx", {"abc\n", "x"}},
        {"exactly full: LF", "abcd\nx", {"abcd", "\n", "x"}},
        {"exactly full: CR LF", "abcd\r\nx", {"abcd", "\n", "x"}},
        {"exactly full: end of the file", "abcd", {"abcd"}},
        {"exactly full: end mark", "abcd\x1A", {"abcd"}},
        {"a CR of the data fills it", "abc\r\r\nx", {"abc\r", "\n", "x"}},
        {"a CR behind it belongs to no end", "abcd\rx\n", {"abcd", "\rx\n"}},
        {"several pieces", "abcdefghi\r\nx", {"abcd", "efgh", "i\n", "x"}},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(Trozos(carpeta.Pon("entrada.txt", caso.bytes), 5), caso.trozos);
    }
}

TEST(CStdioFile, LosesNothingWhereItsBufferIsFilledAnew)
{
    const CCarpetaPrueba carpeta;
    for (const std::size_t largo : {kBufer - 3, kBufer - 2, kBufer - 1, kBufer, kBufer + 1,
                                    2 * kBufer - 1, 2 * kBufer, 3 * kBufer + 7}) {
        SCOPED_TRACE(largo);
        const std::string larga(largo, 'x');
        for (const char* fin : {"\n", "\r\n"}) {
            const CString nombre = carpeta.Pon("entrada.txt", larga + fin + "b" + fin);
            EXPECT_TRUE(Lineas(nombre) == Textos({larga, "b"}));
            EXPECT_TRUE(Une(Trozos(nombre, 700), "") == larga + "\nb\n");
        }
        // Many short lines, so that the end of one of them falls on the border.
        Textos cortas = {std::string(largo % 5, 'y')};
        cortas.resize(1 + largo / 5, "abc");
        EXPECT_TRUE(Lineas(carpeta.Pon("entrada.txt", Une(cortas, "\r\n"))) == cortas);
        EXPECT_TRUE(Lineas(carpeta.Pon("entrada.txt", larga + "\x1A")) == Textos({larga}));
        EXPECT_TRUE(Lineas(carpeta.Pon("entrada.txt", larga + "\r")) == Textos({larga + "\r"}));
    }
}

TEST(CStdioFile, TellsItsPositionInBytesOfTheDisk)
{
    const CCarpetaPrueba carpeta;
    const std::string larga(kBufer + 10, 'x');
    CStdioFile fichero;
    ASSERT_TRUE(fichero.Open(carpeta.Pon("a.txt", "a\r\nbcd\r\n" + larga + "\r\ne"), kLee));
    EXPECT_EQ(fichero.GetLength(), 8 + larga.size() + 3);
    CString linea;
    char bufer[3];
    const auto tras = [&](std::uint64_t posicion) { EXPECT_EQ(fichero.GetPosition(), posicion); };
    tras(0);
    fichero.ReadString(linea);
    tras(3);
    fichero.ReadString(bufer, sizeof bufer);
    tras(5);
    fichero.ReadString(linea);
    tras(8);
    fichero.ReadString(linea);
    tras(8 + larga.size() + 2);
    fichero.ReadString(linea);
    tras(fichero.GetLength());
    EXPECT_FALSE(fichero.ReadString(linea));

    ASSERT_TRUE(fichero.Open(carpeta.Pon("b.txt", "f\n"), kLee)); // nothing of the first one stays
    EXPECT_EQ(fichero.GetLength(), 2U);
    tras(0);
    EXPECT_TRUE(fichero.ReadString(linea));
    EXPECT_EQ(linea, CString("f"));
}

TEST(CFile, OpensNothingThatIsNoFile)
{
    const CCarpetaPrueba carpeta;
    std::filesystem::create_directory(carpeta.Ruta() / "subcarpeta");
    for (const char* nombre : {"subcarpeta", "subcarpeta/", "falta.txt", "falta/a.txt", ""}) {
        SCOPED_TRACE(nombre);
        const CString ruta = *nombre != '\0' ? carpeta.En(nombre) : CString();
        EXPECT_FALSE(CStdioFile().Open(ruta, kLee));
        if (std::string_view(nombre) != "falta.txt") {
            EXPECT_FALSE(CStdioFile().Open(ruta, kEscribe));
            EXPECT_FALSE(CStdioFile().Open(ruta, kRegistro));
        }
    }
    EXPECT_EQ(carpeta.Cuantos(), 1);
}

TEST(CFile, ReadsFromAnyPosition)
{
    const CCarpetaPrueba carpeta;
    std::string bytes;
    for (std::size_t i = 0; i < 3 * kBufer; ++i)
        bytes += static_cast<char>(i % 251);
    bytes.back() = 0x1A; // no end mark here
    CFile fichero;
    ASSERT_TRUE(fichero.Open(carpeta.Pon("a.bin", bytes), CFile::modeRead));
    const struct {
        const char* motivo;
        std::uint64_t posicion;
        UINT cuantos;
    } casos[] = {
        {"from the start", 0, 16},
        {"forward in the buffer", 1000, 16},
        {"back in the buffer", 4, 16},
        {"over the end of the buffer", kBufer - 3, 10},
        {"back to the first bytes", 0, 10},
        {"far", 2 * kBufer + 5, 16},
        {"more than a buffer holds", 7, 2 * static_cast<UINT>(kBufer)},
        {"the last bytes", bytes.size() - 4, 16},
        {"at the end", bytes.size(), 1},
        {"back from the end", bytes.size() - 1, 1},
        {"past the end", bytes.size() + 5000, 16},
        {"where no file reaches", ~std::uint64_t{0}, 16},
        {"back again", 9, 16},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const std::string esperado =
            bytes.substr(std::min<std::size_t>(caso.posicion, bytes.size()), caso.cuantos);
        std::string leido(caso.cuantos, '\0');
        fichero.Seek(caso.posicion);
        EXPECT_EQ(fichero.GetPosition(), caso.posicion);
        leido.resize(fichero.Read(leido.data(), caso.cuantos));
        EXPECT_TRUE(leido == esperado);
        EXPECT_EQ(fichero.GetPosition(), caso.posicion + esperado.size());
    }
}

TEST(CFile, PassesOverTheCaseOfANameWhereJustOneFits)
{
    const struct {
        const char* motivo;
        Textos hay; ///< each holds its own name
        const char* pedido;
        const char* abierto; ///< null for none
    } casos[] = {
        {"the exact one goes first", {"a.bin", "A.BIN", "A.bin"}, "A.BIN", "A.BIN"},
        {"capitals asked for", {"plano1.bin", "plano2.bin"}, "PLANO1.BIN", "plano1.bin"},
        {"small letters asked for", {"PLANO1.BIN"}, "plano1.bin", "PLANO1.BIN"},
        {"two that fit", {"a.bin", "A.bin"}, "A.BIN", nullptr},
        {"letters with accents", {"peña.bin"}, "PEÑA.BIN", "peña.bin"},
        {"these two aren't one letter", {"3÷2.bin"}, "3×2.bin", nullptr},
        {"neither are these", {"a[.bin"}, "a{.bin", nullptr},
        {"a longer name", {"a.bins"}, "A.BIN", nullptr},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const CCarpetaPrueba carpeta;
        for (const std::string& nombre : caso.hay)
            carpeta.Pon(nombre, nombre);
        if (carpeta.Cuantos() != static_cast<int>(caso.hay.size()))
            continue; // where capitals make no other file
        CStdioFile fichero;
        EXPECT_EQ(fichero.Open(carpeta.En(caso.pedido), kLee | CFile::anyCase),
                  caso.abierto != nullptr);
        if (caso.abierto != nullptr) {
            CString linea;
            fichero.ReadString(linea);
            EXPECT_EQ(linea, CString(caso.abierto));
        }
        const bool exacto = std::filesystem::exists(sistema::Ruta(carpeta.En(caso.pedido)));
        EXPECT_EQ(fichero.Open(carpeta.En(caso.pedido), kLee), exacto) << "without the flag";
    }
}

TEST(CStdioFile, WritesEachLineEndAsCrLf)
{
    const CCarpetaPrueba carpeta;
    const std::string larga(3 * kBufer + 1, 'x');
    const struct {
        const char* motivo;
        Textos escrito;
        std::string bytes;
    } casos[] = {
        {"lines", {"a\n", "b\n"}, "a\r\nb\r\n"},
        {"pieces of a line", {"a", "", "b", "\n"}, "ab\r\n"},
        {"no end", {"a\nb"}, "a\r\nb"},
        {"empty lines", {"\n\n"}, "\r\n\r\n"},
        {"a NUL is written as it is", {std::string("a\0\n", 3)}, std::string("a\0\r\n", 4)},
        {"nothing", {}, ""},
        {"more than the buffer holds", {larga + "\n", larga}, larga + "\r\n" + larga},
        {"an end that falls on the buffer's border",
         {larga.substr(0, kBufer - 1), "\nb"},
         larga.substr(0, kBufer - 1) + "\r\nb"},
    };
    for (const UINT modo : {kEscribe, kRegistro})
        for (const auto& caso : casos) {
            SCOPED_TRACE(caso.motivo);
            CStdioFile fichero;
            ASSERT_TRUE(fichero.Open(carpeta.En("a.txt"), modo));
            for (const std::string& texto : caso.escrito)
                fichero.WriteString(texto);
            EXPECT_EQ(fichero.GetPosition(), caso.bytes.size());
            fichero.Close();
            EXPECT_TRUE(carpeta.Lee("a.txt") == caso.bytes);
        }
}

TEST(CStdioFile, ReplacesItsTargetWhenItIsClosedAndNotBefore)
{
    const CCarpetaPrueba carpeta;
    for (const std::size_t veces : {1U, 30000U}) {
        carpeta.Pon("a.txt", "antes");
        CStdioFile fichero;
        ASSERT_TRUE(fichero.Open(carpeta.En("a.txt"), kEscribe));
        for (std::size_t i = 0; i < veces; ++i)
            fichero.WriteString("ahora\n");
        fichero.Flush();
        EXPECT_EQ(carpeta.Lee("a.txt"), "antes");
        fichero.Close();
        EXPECT_EQ(carpeta.Lee("a.txt").size(), veces * 7);
        EXPECT_EQ(carpeta.Cuantos(), 1);
    }
}

TEST(CStdioFile, LeavesItsTargetAsItWasUnlessItIsClosed)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("a.txt", "antes");
    {
        CStdioFile nuevo;
        CStdioFile viejo;
        CStdioFile dosVeces;
        ASSERT_TRUE(nuevo.Open(carpeta.En("b.txt"), kEscribe));
        ASSERT_TRUE(viejo.Open(carpeta.En("a.txt"), kEscribe));
        ASSERT_TRUE(dosVeces.Open(carpeta.En("d.txt"), kEscribe));
        for (CStdioFile* fichero : {&nuevo, &viejo, &dosVeces}) {
            fichero->WriteString("ahora\n");
            fichero->Flush();
        }
        ASSERT_TRUE(dosVeces.Open(carpeta.En("c.txt"), kEscribe));
    }
    EXPECT_EQ(carpeta.Lee("a.txt"), "antes");
    EXPECT_EQ(carpeta.Cuantos(), 1);
}

TEST(CStdioFile, TellsThatItCannotTakeTheTargetsPlace)
{
    const CCarpetaPrueba carpeta;
    CStdioFile fichero;
    ASSERT_TRUE(fichero.Open(carpeta.En("a.txt"), kEscribe));
    fichero.WriteString("ahora\n");
    std::filesystem::create_directories(carpeta.Ruta() / "a.txt" / "dentro");
    try {
        fichero.Close();
        ADD_FAILURE() << "nothing was raised";
    } catch (const CFileException& excepcion) {
        EXPECT_EQ(excepcion.m_strFileName, carpeta.En("a.txt"));
    }
    EXPECT_EQ(carpeta.Cuantos(), 1);
    ASSERT_TRUE(fichero.Open(carpeta.En("b.txt"), kEscribe)); // it can be used again
    fichero.WriteString("b\n");
    fichero.Close();
    EXPECT_EQ(carpeta.Lee("b.txt"), "b\r\n");
}

TEST(CStdioFile, ALogStandsInItsPlaceFromTheStart)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("a.ERR", "antes");
    {
        CStdioFile registro;
        ASSERT_TRUE(registro.Open(carpeta.En("a.ERR"), kRegistro));
        EXPECT_EQ(carpeta.Lee("a.ERR"), "");
        registro.WriteString("E101\n");
        registro.Flush();
        EXPECT_EQ(carpeta.Lee("a.ERR"), "E101\r\n");
        registro.WriteString("E102\n");
    }
    EXPECT_EQ(carpeta.Lee("a.ERR"), "E101\r\nE102\r\n"); // also when the run didn't come to its end
    EXPECT_EQ(carpeta.Cuantos(), 1);
}

TEST(CFile, WhatAFileHeldIsKeptWithItsRightsWhateverNameLeadsThere)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("a.ERR", "de personas");
    carpeta.Pon("vacio.ERR", "");
    namespace fs = std::filesystem;
    std::error_code sinEnlaces; // a system may keep them from its users
    fs::create_symlink("a.ERR", carpeta.Ruta() / "enlace.ERR", sinEnlaces);
    for (const unsigned derechos : {0600U, 0644U, 0640U}) {
        const char* const nombre = derechos == 0640U && !sinEnlaces ? "enlace.ERR" : "a.ERR";
        fs::permissions(carpeta.Ruta() / "a.ERR", fs::perms{derechos});
        const CString anterior = CFile::GuardaAnterior(carpeta.En(nombre));
        EXPECT_EQ(anterior, carpeta.En(nombre) + ".anterior");
        EXPECT_EQ(carpeta.Lee((std::string(nombre) + ".anterior").c_str()), "de personas");
        const auto deOtros = fs::perms::group_all | fs::perms::others_all;
        EXPECT_EQ(fs::status(sistema::Ruta(anterior)).permissions() & deOtros,
                  fs::status(carpeta.Ruta() / "a.ERR").permissions() & deOtros);
    }
    for (const char* nombre : {"vacio.ERR", "no.ERR", "."})
        EXPECT_TRUE(CFile::GuardaAnterior(carpeta.En(nombre)).IsEmpty());
}

TEST(CFile, WhatAnotherRunIsWritingIsNotKeptInThePlaceOfAWholeOne)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("a.ERR.anterior", "de antes");
    CFile deOtro;
    ASSERT_TRUE(deOtro.Open(carpeta.En("a.ERR"),
                            CFile::modeCreate | CFile::modeWrite | CFile::modeInPlace));
    deOtro.Write("la mitad", 8);
    deOtro.Flush();
    EXPECT_THROW(CFile::GuardaAnterior(carpeta.En("a.ERR")), CFileException);
    EXPECT_EQ(carpeta.Lee("a.ERR.anterior"), "de antes");
    deOtro.Close();
    EXPECT_FALSE(CFile::GuardaAnterior(carpeta.En("a.ERR")).IsEmpty());
    EXPECT_EQ(carpeta.Lee("a.ERR.anterior"), "la mitad");
}

TEST(CFile, KnowsOneFileUnderTwoNames)
{
    const CCarpetaPrueba carpeta;
    std::filesystem::create_directory(carpeta.Ruta() / "s");
    carpeta.Pon("a.txt", "igual");
    carpeta.Pon("b.txt", "igual");
    std::filesystem::create_hard_link(carpeta.Ruta() / "a.txt", carpeta.Ruta() / "duro");
    std::error_code sinEnlaces; // a system may keep them from its users
    std::filesystem::create_symlink("../a.txt", carpeta.Ruta() / "s" / "enlace", sinEnlaces);
    const struct {
        const char* motivo;
        const char *uno, *otro;
        bool mismo;
    } casos[] = {
        {"the name itself", "a.txt", "a.txt", true},
        {"another way to it", "a.txt", "./s/../a.txt", true},
        {"a link", "a.txt", "s/enlace", !sinEnlaces},
        {"a second name", "duro", "a.txt", true},
        {"the same content", "a.txt", "b.txt", false},
        {"one that isn't there", "a.txt", "c.txt", false},
        {"neither is there", "c.txt", "c.txt", false},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(CFile::EsAlguno(carpeta.En(caso.uno), {carpeta.En(caso.otro)}), caso.mismo);
        EXPECT_EQ(CFile::EsAlguno(carpeta.En(caso.otro), {carpeta.En(caso.uno)}), caso.mismo);
    }
}
