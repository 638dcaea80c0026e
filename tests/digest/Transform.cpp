#include <bv/maths/tMatrix4.h>
#include <bv/maths/tPreparedTransform.h>
#include <bv/maths/tVector3.h>

#include "Matrices.h"
#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void Transforms(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (unsigned int kind = 0; kind < 5; ++kind)
            for (int i = 0; i < 1500; ++i)
            {
                tMatrix4<T> matrix = work.Matrix<T>(kind < 4 ? kind : 3, rarity);
                if (kind == 4)
                    matrix = WithState(matrix, 5);
                if (work.OneIn(6)) // the fourth coordinate comes out as zero, or close to it
                {
                    matrix(12) = matrix(13) = matrix(14) = T{0};
                    matrix(15) = work.Near(T{0});
                }
                tVector3<T> const vector = work.Vector3<T>(rarity);
                digests["points"].Try([&] { return vector.Transformed(matrix); });
                tVector3<T> changed = vector;
                digests["points"].Try([&] { return changed.Transform(matrix); });
                digests["points"].Add(changed);
                digests["directions"].Add(vector.TransformedAsVector(matrix));
                changed = vector;
                digests["directions"].Add(changed.TransformAsVector(matrix), changed);
            }
}

template <typename T>
void PreparedTransforms(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (unsigned int kind = 0; kind < 5; ++kind)
            for (int i = 0; i < 500; ++i)
            {
                tMatrix4<T> matrix = work.Matrix<T>(kind < 4 ? kind : 3, rarity);
                if (kind == 4)
                    matrix = WithState(matrix, 5);
                if (work.OneIn(6)) // points that cannot be divided
                    matrix(15) = work.Near(T{0});
                tPreparedTransform<T> const map(matrix);
                for (int j = 0; j < 3; ++j)
                {
                    tVector3<T> const vector = work.Direction<T>(rarity);
                    digests["points"].Try([&] { return map(vector); });
                    digests["directions"].Add(map.Direction(vector));
                }
            }
}

} // namespace

void RunTransforms()
{
    RunBoth("transforms", Transforms<float>, Transforms<double>);
    RunBoth("prepared-transforms", PreparedTransforms<float>, PreparedTransforms<double>);
}

} // namespace digest
