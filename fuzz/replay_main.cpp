// Runs a fuzz target on files, and on each file of a folder: the seeds as an ordinary test.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> Inputs(int argc, char** argv) {
  std::vector<fs::path> inputs;
  for (int i = 1; i < argc; ++i) {
    if (!fs::is_directory(argv[i])) {
      inputs.emplace_back(argv[i]);
      continue;
    }
    for (const auto& entry : fs::directory_iterator(argv[i])) inputs.push_back(entry.path());
  }
  return inputs;
}

}  // namespace

int main(int argc, char** argv) {
  if (LLVMFuzzerInitialize != nullptr) LLVMFuzzerInitialize(&argc, &argv);
  const std::vector<fs::path> inputs = Inputs(argc, argv);
  for (const fs::path& input : inputs) {
    std::ifstream file(input, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    std::fprintf(stderr, "%s\n", input.c_str());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  std::printf("%zu inputs\n", inputs.size());
  return inputs.empty() ? 1 : 0;
}
