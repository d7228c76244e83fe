// What SystemVerilog adds: types, interfaces, implicit scopes.
package shapes;
  typedef struct packed { logic [7:0] address; logic valid; logic [1:0][3:0] nibbles; } request_t;
  typedef enum logic [1:0] { Idle, Busy, Done } state_t;
  typedef union packed { logic [15:0] whole; logic [1:0][7:0] halves; } word_t;
endpackage

interface bus_if #(parameter WIDTH = 8) (input logic clock);
  logic [WIDTH-1:0] data;
  logic ready;
  logic spare;
  modport master (output data, input ready, input clock);
  modport slave (input data, output ready, input clock);
endinterface

module producer import shapes::*; (bus_if.master port, output request_t request, output state_t state);
  always_ff @(posedge port.clock) port.data <= port.data + 1;
  assign request = '{address: port.data, valid: port.ready, nibbles: '0};
  always_comb state = port.ready ? Idle : Done;
endmodule

module consumer (bus_if.slave port);
  assign port.ready = ^port.data;
endmodule

module between (bus_if.slave passed);
  consumer inner (.port(passed));
endmodule

module top import shapes::*; (input logic clock, output request_t request, output state_t state);
  bus_if #(.WIDTH(8)) bus (.clock(clock));
  bus_if idle [1:0] (.clock(clock));
  logic [3:0][7:0] packed_words;
  logic [2:1] unpacked [2][3];
  logic single_elements [3:2];
  logic [1:0] memory [65];
  logic [1:0] no_memory [4][2];
  request_t requests [1];
  word_t word;
  int unsigned number;
  byte small_number;
  string text;
  event happened;
  logic [7:0] queue [$];
  logic by_name [string];
  producer source (.port(bus), .request(request), .state(state));
  between sink (.passed(bus));
  assign packed_words = {4{bus.data}};
  assign requests[0] = request;
  if (1) begin
    wire unnamed = clock;
  end
  for (genvar g = 3; g >= 2; g--) begin : outer
    for (genvar h = 0; h < 1; h++) begin : inner
      wire both = clock;
    end
  end
  always_ff @(posedge clock) begin
    unpacked[1][2] <= request.nibbles[1][1:0];
    for (int k = 0; k < 2; k++) number <= number + k;
  end
  task automatic copy(input logic from, output logic to);
    to = from;
  endtask
  logic copied;
  always_comb copy(clock, copied);
endmodule
