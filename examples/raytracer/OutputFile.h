#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

namespace raytracer
{

/// A file that is written without a name, beside its place, and gets its name when it is whole. What stood there stays
/// as it was until then, and nothing is left of a program that ends before.
class OutputFile
{
public:
    /// @throws UserError when no file can be written there.
    explicit OutputFile(std::string const& path);

    /// Where to write.
    [[nodiscard]] std::FILE* GetStream() const { return stream_.get(); }
    /// Puts what was written in its place.
    /// @throws UserError when that cannot be done.
    void Publish();
    /// The message for what failed last, as `errno` or, if that is 0, the given reason says.
    [[noreturn]] void Refuse(std::string const& reason = "unknown reason") const;

private:
    [[nodiscard]] std::filesystem::path GetSideName() const;
    [[nodiscard]] bool Link(std::filesystem::path const& name) const;
    [[nodiscard]] bool Copy(std::filesystem::path const& name) const;

    struct Close
    {
        void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
    };

    std::string given_;
    std::filesystem::path path_;
    std::unique_ptr<std::FILE, Close> stream_;
};

} // namespace raytracer
