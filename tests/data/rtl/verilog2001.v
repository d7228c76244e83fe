// Every way in which Verilog 2001 makes nets, levels and names.
module stage #(parameter WIDTH = 4) (
    input clock, input [WIDTH-1:0] in, output reg [WIDTH-1:0] out,
    inout wire line, output never);
  wire \odd.net[3]$x = in[0];
  wire \a/b , \say"hi"?{} ;
  assign line = in[0] ? 1'b0 : 1'bz;
  always @(posedge clock) out <= in + \odd.net[3]$x ;
endmodule

module lanes #(parameter COUNT = 2) (
    input clock, input [0:7] up, output [15:8] shifted, inout wire line);
  wire [3:0] words [0:COUNT-1];
  reg bits [1:-1];
  reg [7:0] memory [0:255];
  reg [7:0] state;
  wire floating;
  wire [2:0] floating_bus;
  wire always_one = 1'b1;
  wire [0:0] of_one = state[0];
  wire signed [-1:-4] below_zero = state[3:0];
  integer counter, step;
  real ratio;
  time moment;
  parameter SIZE = 3;
  localparam HALF = 2;
  genvar i;
  generate
    for (i = 0; i < COUNT; i = i + 1) begin : lane
      wire [3:0] result;
      if (i == 1) begin : inner
        wire deep = result[1];
      end
      stage #(.WIDTH(4)) first (.clock(clock), .in(up[0:3]), .out(result), .line(line), .never());
      assign words[i] = result;
    end
    if (COUNT > 5) begin : huge
      wire not_there;
    end
  endgenerate
  stage #(.WIDTH(8)) second (clock, up, shifted, line, );
  function [3:0] next(input [3:0] x);
    reg [3:0] held;
    begin
      held = x + 1;
      next = held;
    end
  endfunction
  always @(posedge clock) begin : update
    reg [1:0] local_word;
    local_word = up[0:1];
    state <= memory[up] ^ local_word ^ next(up[0:3]);
    memory[state] <= up;
    counter <= counter + SIZE;
    for (step = 0; step < 2; step = step + 1)
      bits[step] <= up[step];
  end
endmodule

module top (input clock, input [0:7] up, output [15:8] shifted, inout wire line, output reg last);
  lanes two (.clock(clock), .up(up), .shifted(shifted), .line(line));
  lanes #(.COUNT(1)) \dotted.name[0] (.clock(clock), .up(up), .shifted(), .line());
  stage pair [1:0] (.clock(clock), .in(up[0:3]), .out(), .line(), .never());
  always @* last = shifted[8];
endmodule
