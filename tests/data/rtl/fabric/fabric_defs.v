`define PORTS 4
`define DW    32
`timescale 1ns / 1ps
`default_nettype none
