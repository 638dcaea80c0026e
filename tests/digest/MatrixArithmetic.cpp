#include <cstddef>

#include <bv/maths/tMatrix4.h>

#include "Matrices.h"
#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

/// Calls `use(a, b)` for all pairs of states, those from a stream included, with fresh and with stale elements.
template <typename T, typename Use>
void ForPairs(Workload& work, int rounds, Use use)
{
    for (unsigned int const rarity : RARITIES)
        for (unsigned int first = 0; first < 6; ++first)
            for (unsigned int second = 0; second < 6; ++second)
                for (int i = 0; i < rounds; ++i)
                {
                    auto const make = [&](unsigned int kind)
                    {
                        tMatrix4<T> const matrix = work.Matrix<T>(kind < 4 ? kind : work.Below(4), rarity);
                        return kind < 4 ? matrix : WithState(matrix, kind == 4 ? 4U : 0xFFFFFFFFU);
                    };
                    tMatrix4<T> const a = make(first);
                    tMatrix4<T> const b = make(second);
                    use(a, b);
                }
}

template <typename T>
void Products(Digest& digest, Workload& work)
{
    ForPairs<T>(work, 16,
                [&](tMatrix4<T> const& a, tMatrix4<T> const& b)
                {
                    AddWhole(digest, a * b);
                    tMatrix4<T> c(a);
                    c = c * b;
                    AddWhole(digest, c);
                    c = b;
                    c = a * c;
                    AddWhole(digest, c);
                    AddWhole(digest, a * a);
                });
}

template <typename T>
void CompoundProducts(Digest& digest, Workload& work)
{
    ForPairs<T>(work, 16,
                [&](tMatrix4<T> const& a, tMatrix4<T> const& b)
                {
                    tMatrix4<T> c(a);
                    AddWhole(digest, c *= b);
                    AddWhole(digest, c *= b);
                    c = a;
                    AddWhole(digest, c *= c);
                });
}

template <typename T>
void SumsAndComparisons(Digests& digests, Workload& work)
{
    ForPairs<T>(work, 12,
                [&](tMatrix4<T> const& a, tMatrix4<T> const& b)
                {
                    Digest& sums = digests["sums"];
                    Digest& differences = digests["differences"];
                    AddWhole(sums, a + b);
                    AddWhole(differences, a - b);
                    tMatrix4<T> c(a);
                    AddWhole(sums, c += b);
                    AddWhole(differences, c -= a);
                    tMatrix4<T> const& itself = c;
                    AddWhole(sums, c += itself);
                    AddWhole(differences, c -= itself);
                    c = a;
                    for (std::size_t i = 0; i < 16; ++i)
                        if (work.OneIn(8))
                            c(i) = work.Near(c[i]);
                    digests["comparison"].Add(a == b, a != b, a == a, a == c, c == a, c != a);
                });
}

template <typename T>
void Inverses(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 2500; ++i)
        {
            tMatrix4<T> a = work.AnyMatrix<T>(rarity);
            if (work.OneIn(8))
                a = WithState(a, 4 + work.Below(2) * 99);
            if (work.OneIn(8)) // singular
                for (std::size_t k = 0; k < 4; ++k)
                    a(4 + k) = a[k];
            auto const whole = [](tMatrix4<T> const& matrix)
            {
                Digest inner;
                AddWhole(inner, matrix);
                return inner.GetHash();
            };
            digests["inverse"].Try([&] { return whole(a.Inverted()); });
            tMatrix4<T> b(a);
            digests["inverse-in-place"].Try([&] { return whole(b.Invert()); });
            AddWhole(digests["inverse-in-place"], b);
            AddWhole(digests["transpose"], a.Transposed());
            b = a;
            AddWhole(digests["transpose"], b.Transpose());
            digests["determinant"].Add(a.Determinant());
            digests["kind"].Add(a.IsIdentity(), a.IsDiagonal(), a.IsOrthonormal());
        }
}

} // namespace

void RunMatrixArithmetic()
{
    RunBoth("matrix-product", Products<float>, Products<double>);
    RunBoth("matrix-compound-product", CompoundProducts<float>, CompoundProducts<double>);
    RunBoth("matrix-pairs", SumsAndComparisons<float>, SumsAndComparisons<double>);
    RunBoth("matrix", Inverses<float>, Inverses<double>);
}

} // namespace digest
