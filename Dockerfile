# An image whose standard input and output speak UCI:
#
#     docker build -t vorka .
#     docker run -i --rm vorka
#
# scripts/try_package image follows these lines where there is no Docker.
FROM debian:12-slim AS build
WORKDIR /vorka
COPY . .
RUN scripts/package

FROM debian:12-slim
COPY --from=build /vorka/build/package/out/vorka_*.deb /tmp/
RUN apt-get update -qq && apt-get install -y -qq --no-install-recommends /tmp/vorka_*.deb \
    && rm -rf /tmp/vorka_*.deb /var/lib/apt/lists/*
USER games
WORKDIR /tmp
ENTRYPOINT ["/usr/games/vorka-uci"]
