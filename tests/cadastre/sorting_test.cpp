#include "cadastre/sorting.h"

#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

struct CCosa {
    int clave;
    std::string texto; // tells equal keys apart, and is empty when it was moved from
};

std::vector<std::string> Textos(const std::vector<CCosa>& cosas)
{
    std::vector<std::string> textos;
    for (const CCosa& cosa : cosas)
        textos.push_back(cosa.texto);
    return textos;
}

} // namespace

TEST(OrdenaPor, KeepsTheOrderOfEqualElementsAndLosesNothing)
{
    std::mt19937 azar(3);
    for (int vez = 0; vez < 1000; ++vez) {
        std::vector<CCosa> cosas(azar() % 50);
        for (std::size_t i = 0; i < cosas.size(); ++i)
            cosas[i] = {static_cast<int>(azar() % 20),
                        "el texto que llevaba el " + std::to_string(i)};
        // One by one, each behind all that aren't greater.
        std::vector<CCosa> despacio;
        for (const CCosa& cosa : cosas)
            despacio.insert(std::find_if(despacio.begin(), despacio.end(),
                                         [&](const CCosa& c) { return c.clave > cosa.clave; }),
                            cosa);
        OrdenaPor(cosas, [](const CCosa& cosa) { return cosa.clave; });
        ASSERT_EQ(Textos(cosas), Textos(despacio));
    }
}
