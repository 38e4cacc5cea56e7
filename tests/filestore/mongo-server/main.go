// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0

// A server that speaks the MongoDB protocol, for the tests of the GridFS store: it listens
// on one loopback address and keeps its data in one folder.
//
//	mongo-server 127.0.0.1:PORT FOLDER
//
// Prints its address when it listens; ends on SIGTERM.
package main

import (
	"context"
	"fmt"
	"log/slog"
	"os"
	"os/signal"
	"syscall"
	"time"

	"github.com/FerretDB/FerretDB/ferretdb"
)

// Nobody stops it when the tests are killed.
const longestLife = 2 * time.Hour

func run(address, folder string) error {
	ctx, stop := signal.NotifyContext(context.Background(), syscall.SIGTERM, syscall.SIGINT)
	defer stop()
	ctx, cancel := context.WithTimeout(ctx, longestLife)
	defer cancel()
	quiet := slog.New(slog.NewTextHandler(os.Stderr, &slog.HandlerOptions{Level: slog.LevelError}))
	server, err := ferretdb.New(&ferretdb.Config{
		Listener:  ferretdb.ListenerConfig{TCP: address},
		Logger:    quiet,
		Handler:   "sqlite",
		SQLiteURL: "file:" + folder + "/",
	})
	if err != nil {
		return err
	}
	ended := make(chan error, 1)
	go func() { ended <- server.Run(ctx) }()
	fmt.Println(server.MongoDBURI())
	return <-ended
}

func main() {
	if len(os.Args) != 3 {
		fmt.Fprintln(os.Stderr, "usage: mongo-server 127.0.0.1:PORT FOLDER")
		os.Exit(2)
	}
	if err := run(os.Args[1], os.Args[2]); err != nil {
		fmt.Fprintln(os.Stderr, err)
		os.Exit(1)
	}
}
