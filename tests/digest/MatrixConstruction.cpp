#include <cstddef>
#include <type_traits>

#include <bv/maths/tMatrix4.h>

#include "Matrices.h"
#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void Construction(Digests& digests, Workload& work)
{
    using Other = std::conditional_t<sizeof(T) == 4, double, float>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 1200; ++i)
        {
            // Close to each state, on both sides of its limits.
            T values[16];
            tMatrix4<T> const start = work.Fresh<T>(work.Below(4), 0);
            for (std::size_t k = 0; k < 16; ++k)
                values[k] = work.OneIn(6) ? work.Near(start[k]) : start[k];
            if (rarity != 0 && work.OneIn(4))
                values[work.Below(16)] = work.Special<T>();
            tMatrix4<T> const matrix(values);
            Digest& elements = digests["elements"];
            AddWhole(elements, matrix);
            AddWhole(digests["columns"], tMatrix4<T>(tVector3<T>(values[0], values[4], values[8]),
                                                     tVector3<T>(values[1], values[5], values[9]),
                                                     tVector3<T>(values[2], values[6], values[10])));
            AddWhole(elements, tMatrix4<T>(values[0], values[1], values[2], values[3], values[4], values[5], values[6],
                                           values[7], values[8], values[9], values[10], values[11], values[12],
                                           values[13], values[14], values[15]));
            tMatrix4<Other> const other(matrix);
            Digest& conversions = digests["conversions"];
            AddWhole(conversions, other);
            tMatrix4<T> copy(matrix);
            copy = other;
            AddWhole(conversions, copy);
            copy = values;
            AddWhole(elements, copy);
            Other others[16];
            for (std::size_t k = 0; k < 16; ++k)
                others[k] = static_cast<Other>(values[k]);
            AddWhole(conversions, tMatrix4<T>(others));
            copy = others;
            AddWhole(conversions, copy);
            Digest& copies = digests["copies"];
            copy = copy.Get();
            AddWhole(copies, copy);
            tMatrix4<T> stale = work.Matrix<T>(work.Below(4), rarity);
            AddWhole(copies, tMatrix4<T>(stale));
            copy = stale;
            AddWhole(copies, copy);
            digests["access"].Add(stale[5], stale.GetElement(7), stale[tTuple2<unsigned int>(work.Below(4), 2)],
                                  stale.GetElement(tTuple2<unsigned int>(1, 3)), stale(6),
                                  stale(tTuple2<unsigned int>(3, 0)));
            tMatrix4<T> const& unchanged = stale;
            digests["elements-read"].Add(unchanged.GetElement(9), unchanged.GetElement(tTuple2<unsigned int>(2, 1)));
        }
}

} // namespace

void RunMatrixConstruction()
{
    RunBoth("matrix-construction", Construction<float>, Construction<double>);
}

} // namespace digest
