// Reads a few values, changes one and saves the file.
#include <confgrove/confgrove.h>

#include <cstdio>
#include <memory>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  std::unique_ptr<Config> config(ConfCreate(argv[1], ConfCreateOpen, ConfNameFullPath));
  if (config == nullptr) return 1;  // it is missing, or its errors have been printed
  std::int32_t port = 80;           // stays 80 if the file has no port
  config->GetInt(&port, "port");
  if (const char* file = config->GetString("log.file")) std::printf("log to %s\n", file);
  config->SetInt(port + 1, "port");
  return config->Save() ? 0 : 1;
}
