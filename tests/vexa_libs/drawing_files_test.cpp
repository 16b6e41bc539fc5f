#include <gtest/gtest.h>

#include "tests/support/files.h"
#include "vexa_libs/binary.h"
#include "vexa_libs/drawing.h"
#include "vexa_libs/library_types.h"
#include "vexa_libs/topology.h"

using namespace vexageo; // NOLINT(google-build-using-namespace): it is all about that library

namespace {

constexpr UINT kEscribe = CFile::modeCreate | CFile::modeWrite;
constexpr UINT kLee = CFile::modeRead;

std::string Hex(std::string_view bytes)
{
    constexpr std::string_view kCifras = "0123456789abcdef";
    std::string texto;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        texto += kCifras[byte >> 4U];
        texto += kCifras[byte & 15U];
    }
    return texto;
}

CTexto<int> Rotulo(const CString& texto, CPunto<int> punto)
{
    CTexto<int> rotulo("125201");
    rotulo.SetTexto(texto);
    rotulo.Puntos().push_back(punto);
    return rotulo;
}

CPoligonoTopologico Poligono(int numero, std::initializer_list<int> tramos)
{
    CPoligonoTopologico poligono;
    poligono.NumPoligono(numero);
    for (const int tramo : tramos)
        poligono.InsertaTramo(tramo);
    return poligono;
}

/// A polygon with a bit of everything.
CPoligonoTopologico Lleno()
{
    CPoligonoTopologico isla = Poligono(8, {-5});
    isla.Clase(CPoligonoTopologico::kIsla);
    isla.AreaPropia(-2.5);
    CPoligonoTopologico poligono = Poligono(7, {17, -60});
    poligono.Centroide({1, -2, 3});
    poligono.PuntoInterior({4, 5, 6});
    poligono.Maximas().Nuevo({-9, -9, 0});
    poligono.Maximas().Nuevo({9, 9, 0});
    poligono.AreaPropia(10.25);
    poligono.OffsetCentroide(17);
    poligono.IndiceCentroide(2);
    poligono.IndiceNuevo(11);
    poligono.InsertaIsla(isla);
    poligono.SetPadre(3);
    return poligono;
}

class FicherosDeDibujo : public testing::Test {
protected:
    /// Writes with `escribe` and gives the bytes.
    template <class F>
    std::string Escribe(const char* nombre, F escribe)
    {
        CFile fichero;
        EXPECT_TRUE(fichero.Open(carpeta.En(nombre), kEscribe));
        escribe(fichero);
        fichero.Close();
        return carpeta.Lee(nombre);
    }
    /// Reads an object from a file of these bytes.
    template <class T>
    bool Lee(std::string_view bytes, T& objeto)
    {
        CFile fichero;
        EXPECT_TRUE(fichero.Open(carpeta.Pon("leido", bytes), kLee));
        return objeto.Read(&fichero);
    }

    CCarpetaPrueba carpeta;
};

} // namespace

TEST_F(FicherosDeDibujo, AnEntityStandsAsTheFormSays)
{
    const std::string bytes = Escribe("a.BIN", [](CFile& f) {
        CCabeceraDibujo cabecera;
        cabecera.entidades = 1;
        cabecera.Write(&f);
        Rotulo("12", {1, -1, 256}).Write(&f);
    });
    EXPECT_EQ(Hex(bytes), "5658424e"
                          "01"
                          "02"
                          "0000"
                          "01000000"
                          "00000000" // head
                          "56454e54"
                          "02"
                          "00"
                          "0600"
                          "01000000"
                          "02000000" // VENT
                          "313235323031"
                          "01000000"
                          "ffffffff"
                          "00010000"
                          "3132"
                          "e5c91648");
    EXPECT_EQ(Crc32("123456789"), 0xCBF43926U);
    EXPECT_EQ(Crc32("3456789", Crc32("12")), 0xCBF43926U);
    EXPECT_EQ(Crc32("Pol. 3, parcela 12, subparcela a: 1,2345 ha."), 0xF665A963U);
}

TEST_F(FicherosDeDibujo, APolygonComesBackWhole)
{
    const std::string bytes = Escribe("a.PAR", [](CFile& f) { Lleno().Write(&f); });
    EXPECT_EQ(Hex(bytes.substr(0, 14)), "56504f4c"
                                        "c0000000"
                                        "07000000"
                                        "0100");
    CPoligonoTopologico leido;
    ASSERT_TRUE(Lee(bytes, leido));
    EXPECT_EQ(leido.NumPoligono(), 7);
    EXPECT_TRUE(leido.EsParcela());
    EXPECT_EQ(leido.Centroide(), CPunto<int>(1, -2, 3));
    EXPECT_EQ(leido.PuntoInterior(), CPunto<int>(4, 5, 6));
    EXPECT_EQ(leido.Maximas().Maximo, CPunto<int>(9, 9));
    EXPECT_EQ(leido.Area(), 7.75) << "net of its island";
    EXPECT_EQ(leido.OffsetTramo(1), -60);
    EXPECT_EQ(leido.IndiceTramos(0), 11);
    EXPECT_EQ(leido.Isla(0).OffsetTramo(0), -5);
    EXPECT_EQ(leido.GetPadre(), 3);
    EXPECT_EQ(Escribe("b.PAR", [&](CFile& f) { leido.Write(&f); }), bytes);
}

TEST_F(FicherosDeDibujo, NoDamageIsTakenForARecord)
{
    const std::string poligono = Escribe("a", [](CFile& f) { Lleno().Write(&f); });
    const std::string entidad = Escribe("b", [](CFile& f) { Rotulo("12-a", {5, 5}).Write(&f); });
    for (std::size_t i = 0; i < poligono.size(); ++i) {
        CPoligonoTopologico leido = Poligono(99, {});
        EXPECT_FALSE(Lee(poligono.substr(0, i), leido)) << "cut at " << i;
        std::string alterado = poligono;
        alterado[i] = static_cast<char>(alterado[i] ^ 0x10);
        EXPECT_FALSE(Lee(alterado, leido)) << "changed at " << i;
        EXPECT_EQ(leido.NumPoligono(), 99) << "what was there stays";
    }
    for (std::size_t i = 0; i < entidad.size(); ++i) {
        CTexto<int> leido;
        EXPECT_FALSE(Lee(entidad.substr(0, i), leido)) << "cut at " << i;
        std::string alterado = entidad;
        alterado[i] = static_cast<char>(alterado[i] ^ 0x80);
        EXPECT_FALSE(Lee(alterado, leido)) << "changed at " << i;
    }
}

TEST_F(FicherosDeDibujo, ALyingLengthWithAGoodSumIsRefused)
{
    // The sums are made anew, so that only the lengths themselves can tell.
    const auto conSuma = [](const std::string& bytes) {
        CEscritor suma;
        suma.U32(Crc32(bytes));
        return bytes + suma.Hecho();
    };
    const std::string poligono = Escribe("a", [](CFile& f) { Poligono(1, {17}).Write(&f); });
    const std::string cuerpo = poligono.substr(0, poligono.size() - 4);
    const auto con = [&](std::size_t donde, std::string_view bytes) {
        std::string otro = cuerpo;
        return conSuma(otro.replace(donde, bytes.size(), bytes));
    };
    constexpr std::size_t kArea = 8 + 54;
    constexpr std::size_t kTramos = 8 + 72; // where the number of stretches stands
    const struct {
        const char* motivo;
        std::string bytes;
    } casos[] = {
        {"more stretches than the record holds", con(kTramos, "\xFF\xFF\xFF\x7F")},
        {"fewer, so that bytes are left over", con(kTramos, std::string_view("\0\0\0\0", 4))},
        {"a thousand million islands", con(kTramos + 12, std::string_view("\0\0\0\x40", 4))},
        {"one byte more behind the parent",
         conSuma("VPOL" + std::string("\x5D\0\0\0", 4) + cuerpo.substr(8) + "x")},
        {"an area that is no number", con(kArea, std::string_view("\0\0\0\0\0\0\xF8\x7F", 8))},
        {"an area without bounds", con(kArea, std::string_view("\0\0\0\0\0\0\xF0\xFF", 8))},
        {"an entity of kind 4", conSuma(std::string("VENT\4\0\0\0\0\0\0\0\0\0\0\0", 16))},
        {"an entity of 4,000 million points",
         conSuma(std::string("VENT\1\0\0\0\xFF\xFF\xFF\xFF\0\0\0\0", 16))},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        CPoligonoTopologico leido;
        CTexto<int> texto;
        EXPECT_FALSE(Lee(caso.bytes, leido));
        EXPECT_FALSE(Lee(caso.bytes, texto));
    }
}

TEST_F(FicherosDeDibujo, LinesNamedOverAndOverCostNoMoreThanTheDrawing)
{
    CLinea<int> linea;
    for (int i = 0; i < 1000; ++i)
        linea.Puntos().emplace_back(i, i % 7);
    const CString nombre = carpeta.Pon("c", Escribe("c", [&](CFile& f) {
                                           vexageo::CCabeceraDibujo().Write(&f);
                                           linea.Write(&f);
                                       }));
    CFile dibujo;
    ASSERT_TRUE(dibujo.Open(nombre, CFile::modeRead));
    const struct {
        const char* motivo;
        int tramos;
        std::size_t puntos;
        int fallos;
    } casos[] = {
        {"a few times over", 3, 3000, 0},
        {"a ring too long for its drawing", 1200, 0, 1},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        CPoligonoTopologico poligono;
        for (int i = 0; i < caso.tramos; ++i)
            poligono.InsertaTramo(17);
        CLinea<int> anillo;
        int fallos = 0;
        vexageo::ConstruyeLinea(poligono, &dibujo, anillo, [&] { return ++fallos > 0; });
        EXPECT_EQ(anillo.Puntos().size(), caso.puntos);
        EXPECT_EQ(fallos, caso.fallos);
        EXPECT_FALSE(vexageo::SonDesmedidos(3'999'000, linea, dibujo));
        EXPECT_TRUE(vexageo::SonDesmedidos(3'999'001, linea, dibujo));
    }
}

TEST_F(FicherosDeDibujo, IslandsStandSixteenDeepAndNoDeeper)
{
    for (const int hondura : {16, 17}) {
        CPoligonoTopologico poligono;
        for (int i = 0; i < hondura; ++i) {
            CPoligonoTopologico fuera;
            fuera.InsertaIsla(poligono);
            poligono = fuera;
        }
        const std::string bytes = Escribe("a", [&](CFile& f) { poligono.Write(&f); });
        CPoligonoTopologico leido;
        EXPECT_EQ(Lee(bytes, leido), hondura == 16);
    }
}

TEST_F(FicherosDeDibujo, ALineIsReadFromALineAlone)
{
    CTexto<int> borrado = Rotulo("12", {5, 5});
    borrado.Tipo().SetBorrado(true);
    const std::string texto = Escribe("a", [&](CFile& f) { borrado.Write(&f); });
    CLinea<int> linea("antes");
    EXPECT_FALSE(Lee(texto, linea));
    EXPECT_TRUE(linea.Tipo().ComparaCodigo("antes"));
    CTexto<int> leido;
    ASSERT_TRUE(Lee(texto, leido));
    EXPECT_TRUE(leido.Tipo().EsTexto() && leido.Tipo().EsBorrado());
    linea.Puntos() = {{1, 1}, {2, 2}};
    const std::string recta = Escribe("b", [&](CFile& f) { linea.Write(&f); });
    ASSERT_TRUE(Lee(recta, leido)) << "a text takes any entity, so that it can be told apart";
    EXPECT_FALSE(leido.Tipo().EsTexto());
}

TEST_F(FicherosDeDibujo, ATopologyAnswersByItsDrawing)
{
    // Two squares side by side that share an edge, the right one with an island, and a square
    // around all whose label can't be read.
    CLinea<int> borde;
    std::vector<int> posicion;
    Escribe("t.BIN", [&](CFile& f) {
        CCabeceraDibujo().Write(&f);
        const auto pon = [&](const CEntidadVexa<int>& entidad) {
            posicion.push_back(static_cast<int>(f.GetPosition()) + 1);
            entidad.Write(&f);
        };
        borde.Puntos() = {{10, 10}, {10, 0}}; // shared, downwards
        pon(borde);
        borde.Puntos() = {{10, 0}, {0, 0}, {0, 10}, {10, 10}};
        pon(borde);
        borde.Puntos() = {{10, 0}, {20, 0}, {20, 10}, {10, 10}};
        pon(borde);
        borde.Puntos() = {{13, 3}, {17, 3}, {17, 7}, {13, 7}, {13, 3}};
        pon(borde);
        borde.Puntos() = {{-5, -5}, {25, -5}, {25, 15}, {-5, 15}, {-5, -5}};
        pon(borde);
        pon(Rotulo("izquierda", {1, 1}));
    });
    Escribe("t.PAR", [&](CFile& f) {
        CPoligonoTopologico fuera = Poligono(1, {posicion[4], 0, 2000000000});
        fuera.AreaPropia(6);
        fuera.OffsetCentroide(5);
        fuera.Write(&f);
        CPoligonoTopologico derecha = Poligono(9, {posicion[2], posicion[0]});
        derecha.AreaPropia(1);
        derecha.PuntoInterior({11, 1});
        derecha.Centroide({12, 1});
        derecha.Write(&f);
        CPoligonoTopologico isla = Poligono(1, {posicion[3]});
        isla.Clase(CPoligonoTopologico::kIsla);
        isla.AreaPropia(-0.25);
        isla.Write(&f);
        CPoligonoTopologico izquierda = Poligono(5, {posicion[1], posicion[0]});
        izquierda.AreaPropia(1);
        izquierda.OffsetCentroide(posicion[5]);
        izquierda.Centroide({2, 2});
        izquierda.PuntoInterior({3, 3});
        izquierda.SetPadre(4);
        izquierda.Write(&f);
        f.Write("VPOLxx", 6); // a damaged rest ends the reading
    });
    CFile bin;
    CFile par;
    ASSERT_TRUE(bin.Open(carpeta.En("t.bin"), kLee | CFile::anyCase)) << "in small letters";
    ASSERT_TRUE(par.Open(carpeta.En("t.PAR"), kLee));
    CTopologia topologia;
    topologia.Read(&bin, &par);
    topologia.OrdenaPoligonos();
    ASSERT_EQ(topologia.Poligonos(), 3);
    EXPECT_EQ(topologia.DameTextoCentroide(0), CString("")) << "can't be read";
    EXPECT_EQ(topologia.DameTextoCentroide(1), CString("izquierda"));
    EXPECT_EQ(topologia.DameArea(2), 0.75);
    EXPECT_EQ(topologia.GetPadre(1), -1) << "whatever the file says";
    EXPECT_EQ(topologia.DameCentroide(2, true), CPunto<int>(11, 1)) << "it has no centroid";
    EXPECT_EQ(topologia.DameCentroide(2, false), CPunto<int>(12, 1));
    EXPECT_EQ(topologia.DameCentroide(1, true), CPunto<int>(2, 2));
    const struct {
        const char* motivo;
        CPunto<int> punto;
        int poligono;
    } casos[] = {
        {"the smaller of two", {5, 5}, 1},
        {"on the shared edge the smaller area", {10, 5}, 2},
        {"in the island, but in the square around", {15, 5}, 0},
        {"on the island's shore", {13, 5}, 2},
        {"beside both", {-1, 5}, 0},
        {"nowhere", {30, 5}, -1},
    };
    const auto responde = [&casos](const CTopologia& preguntada) {
        for (const auto& caso : casos) {
            SCOPED_TRACE(caso.motivo);
            EXPECT_EQ(preguntada.EncuentraPoligono(caso.punto), caso.poligono);
        }
    };
    responde(topologia);

    CTopologia otra; // in another order, and asked already
    bin.Seek(0);
    par.Seek(0);
    otra.Read(&bin, &par);
    EXPECT_EQ(otra.EncuentraPoligono({5, 5}), 2);
    CTopologia copia = topologia;
    otra = copia;
    const CTopologia tomada = std::move(copia);
    // NOLINTNEXTLINE(bugprone-use-after-move): a topology that was taken is an empty one
    EXPECT_EQ(copia.EncuentraPoligono({5, 5}), -1);
    topologia = CTopologia();
    EXPECT_EQ(topologia.EncuentraPoligono({5, 5}), -1);
    responde(otra);
    responde(tomada);
}

TEST(Dibujo, CountsWhatItTookAndIsCopiedDeep)
{
    CDibujoVexa dibujo;
    CTexto<int> rotulo = Rotulo("1", {5, -5});
    dibujo.Inserta(rotulo);
    rotulo.Tipo().SetBorrado(true);
    rotulo.SetTexto("2");
    dibujo.Inserta(rotulo);
    CLinea<int> linea;
    linea.Puntos() = {{-100, 0}, {0, 100}};
    dibujo.Inserta(linea);
    CDibujoVexa copia(dibujo);
    dibujo = CDibujoVexa();
    EXPECT_EQ(dibujo.Cantidad(), 0U);
    EXPECT_EQ(copia.Cantidad(), 3U);
    EXPECT_EQ(copia.CantidadTextos(), 2U);
    EXPECT_EQ(copia.CantidadLineas(), 1U);
    EXPECT_EQ(copia.CantidadBorrados(), 1U);
    EXPECT_EQ(copia.Texto(1).Texto(), CString("2"));
    EXPECT_EQ(copia.GetMaximasInt().Minimo, CPunto<int>(-100, -5));
    EXPECT_EQ(copia.GetMaximasDouble().Maximo, CPunto<double>(0.05, 1.0));

    const CDibujoVexa tomado = std::move(copia);
    EXPECT_EQ(tomado.CantidadTextos(), 2U);
    copia.Inserta(
        linea); // NOLINT(bugprone-use-after-move): a drawing that was taken is an empty one
    EXPECT_EQ(copia.CantidadTextos() + copia.CantidadBorrados(), 0U);
    EXPECT_EQ(copia.CantidadLineas(), 1U);
}

TEST(Indices, HoldTheProductOfTheirSizes)
{
    constexpr struct {
        const char* motivo;
        int filas, columnas;
        std::size_t sitios;
    } kCasos[] = {
        {"a table", 3, 4, 12},
        {"nothing in one direction", 0, 4, 0},
        {"less than nothing", -3, 4, 0},
        {"a product of two negative sizes", -3, -4, 12},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        vexageo::CIndices indices;
        indices.Inicializa(caso.filas, caso.columnas, -7);
        EXPECT_EQ(indices.indices, std::vector<int>(caso.sitios, -7));
        EXPECT_EQ(indices.primero * 100 + indices.segundo, caso.filas * 100 + caso.columnas);
    }
}
